#pragma once

#include "app/model/DashboardModel.h"
#include "app/platform/Pasteboard.h"
#include "app/platform/UrlOpener.h"
#include "app/platform/UserDefaults.h"
#include "demo/Rollout.h"
#include "demo/SampleDatabase.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace tallyview::test {

class MemoryDefaults : public UserDefaults {
public:
    QVariant value(const QString &key) const override { return values.value(key); }
    void setValue(const QString &key, const QVariant &value) override {
        const int type = value.typeId();
        const bool isKeptAsText = type == QMetaType::Double || type == QMetaType::Bool;
        values.insert(key, isKeptAsText ? QVariant(value.toString()) : value);
        emit changed(key);
    }
    void remove(const QString &key) override { values.remove(key); }

    QVariantMap values;
};

class RecordingOpener : public UrlOpener {
public:
    void open(const QByteArray &url, const QString &) override { opened.append(url); }
    QList<QByteArray> opened;
};

class MemoryPasteboard : public Pasteboard {
public:
    void setText(const QString &copied) override { text = copied; }
    QString text;
};

/// 2024-03-07 12:00:00 UTC, a Thursday.
constexpr std::int64_t noon = 1'709'812'800;

/// A thread of the sample database; `age` is in seconds before noon, none for a missing time.
struct Sample {
    std::string id;
    std::optional<std::int64_t> age = 0;
    bool running = true;
    std::string cwd = "/src/atlas";
    bool archived = false;
    bool subagent = false;
    std::string title = "Task";
    std::string branch = {};
    std::string source = "cli";
};

/// Running threads "0", "1", … a second apart, the latest first.
inline std::vector<Sample> lately(int count) {
    std::vector<Sample> samples;
    for (int i = 0; i < count; ++i) {
        samples.push_back({.id = std::to_string(i), .age = i});
    }
    return samples;
}

/// A model over a database of its own with a clock that stands at noon.
class ModelFixture {
public:
    ModelFixture()
        : model(OrvikThreadStore(databasePath()), {.defaults = defaults,
                                                   .urlOpener = opener,
                                                   .pasteboard = pasteboard,
                                                   .now = [this] { return now; },
                                                   .utcOffset = [this] { return utcOffset; },
                                                   .numberLocale = "en",
                                                   .collationLocale = QLocale(QLocale::English)}) {}

    std::filesystem::path databasePath() const {
        return home.filePath(".orvik/state_5.sqlite").toStdString();
    }

    /// The agent now has exactly these threads.
    void write(const std::vector<Sample> &samples) const {
        std::vector<demo::SampleRow> rows;
        std::ranges::transform(samples, std::back_inserter(rows),
                               [this](const Sample &sample) { return row(sample); });
        QVERIFY(demo::writeDatabase(databasePath(), rows, demo::SampleJournal::rollback));
    }

    /// Returns when everything that follows the model has followed it.
    void refresh() {
        QSignalSpy finished(&model, &DashboardModel::refreshFinished);
        model.refresh();
        QVERIFY(finished.count() == 1 || finished.wait());
        QCoreApplication::processEvents();
    }

    void show(const std::vector<Sample> &samples) {
        write(samples);
        refresh();
    }

    /// The ids of a list, as one text to compare.
    static QString ids(const ThreadList &threads) {
        QStringList result;
        for (const ThreadRecord &thread : threads) {
            result.append(QString::fromUtf8(thread.id()));
        }
        return result.join(u' ');
    }
    QString visible() const { return ids(model.visibleThreads()); }
    QString selected() const {
        return QString::fromStdString(model.selectedThreadID().value_or("none"));
    }
    ThreadRecord thread(const std::string &id) const {
        return *std::ranges::find(model.threads(), id, &ThreadRecord::id);
    }

    QTemporaryDir home;
    MemoryDefaults defaults;
    RecordingOpener opener;
    MemoryPasteboard pasteboard;
    Instant now{std::chrono::seconds(noon)};
    UtcOffset utcOffset = [](qint64) { return 0; };
    DashboardModel model;

private:
    demo::SampleRow row(const Sample &sample) const {
        const char *lastEvent = sample.running ? "task_started" : "task_complete";
        const std::string rollout = home.filePath(lastEvent).toStdString();
        if (!std::filesystem::exists(rollout)) {
            [[maybe_unused]] const auto appended = demo::appendEvent(rollout, lastEvent);
        }
        demo::SampleRow row{.id = sample.id, .title = sample.title, .cwd = sample.cwd};
        row.source = sample.source;
        row.gitBranch = sample.branch;
        row.archived = sample.archived;
        row.agentRole = sample.subagent ? "helper" : "";
        row.rolloutPath = rollout;
        if (sample.age) {
            row.updatedAtMs = (noon - *sample.age) * 1000;
        }
        return row;
    }
};

} // namespace tallyview::test
