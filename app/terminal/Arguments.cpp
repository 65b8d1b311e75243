#include "app/terminal/Arguments.h"

#include "app/terminal/DisplayWidth.h"
#include "app/terminal/OptionTable.h"

#include <QCommandLineParser>

#include <algorithm>

namespace tallyview {

namespace {

template <class Value>
struct Named {
    QString name;
    Value value;
};

template <class Enumeration>
std::vector<Named<Enumeration>> namedCases() {
    std::vector<Named<Enumeration>> named;
    for (const Enumeration value : allCases<Enumeration>) {
        const std::string_view name = rawValue(value);
        named.push_back({QString::fromUtf8(name.data(), std::ssize(name)), value});
    }
    return named;
}

QString dashed(const QString &name) { return (name.size() == 1 ? "-" : "--") + name; }

/// Takes the values of options out of what Qt has parsed; remembers the first that is wrong.
class ArgumentReader {
public:
    explicit ArgumentReader(const QStringList &words) {
        for (const OptionText &option : optionTexts()) {
            m_parser.addOption(QCommandLineOption(option.name, {}, option.value));
        }
        if (!m_parser.parse(QStringList("tallyview") + words)) {
            const QStringList unknown = m_parser.unknownOptionNames();
            fail(unknown.isEmpty()
                     ? QStringLiteral("选项 %1 的值缺失或多余")
                           .arg(m_parser.errorText().section(u'\'', 1, 1))
                     : QStringLiteral("没有选项 %1").arg(dashed(unknown.constFirst())));
        }
    }

    std::expected<Arguments, QString> arguments() {
        readCommand();
        readFilters();
        readLimits();
        readOutput();
        if (!m_error.isEmpty()) {
            return std::unexpected(m_error + QStringLiteral("；用法见 tallyview --help"));
        }
        return m_read;
    }

private:
    void fail(const QString &error) { m_error = m_error.isEmpty() ? error : m_error; }

    void readCommand() {
        if (m_parser.isSet("help") || m_parser.isSet("version")) {
            m_read.command =
                m_parser.isSet("help") ? Arguments::Command::help : Arguments::Command::version;
            return;
        }
        QStringList words = m_parser.positionalArguments();
        const QString name = words.isEmpty() ? QStringLiteral("list") : words.takeFirst();
        const auto found = std::ranges::find(commandTexts(), name, &CommandText::name);
        if (found == commandTexts().end()) {
            fail(QStringLiteral("没有命令 %1").arg(name));
            return;
        }
        m_read.command = found->command;
        readOperand(*found, words);
        for (const OptionText &option : optionTexts()) {
            if (m_parser.isSet(option.name) && !option.isFor(m_read.command)) {
                fail(QStringLiteral("%1 没有选项 %2").arg(name, dashed(option.name)));
            }
        }
    }

    void readOperand(const CommandText &command, const QStringList &words) {
        const qsizetype wanted = command.operand.isEmpty() ? 0 : 1;
        if (words.size() > wanted) {
            fail(QStringLiteral("%1 之后多了 %2").arg(command.name, words.at(wanted)));
        } else if (words.size() < wanted || (wanted == 1 && words.constFirst().isEmpty())) {
            fail(QStringLiteral("%1 之后要写 %2").arg(command.name, command.operand));
        } else if (wanted == 1) {
            m_read.id = words.constFirst().toStdString();
        }
    }

    void readFilters() {
        m_read.status = choice("status", namedCases<TaskStatusFilter>());
        m_read.recency = choice("recency", namedCases<TaskRecencyFilter>());
        if (m_parser.isSet("project")) {
            m_read.project = m_parser.value("project").toStdString();
        }
        m_read.search = m_parser.value("search").toStdString();
        m_read.subagents = m_parser.isSet("subagents") || m_parser.isSet("all");
        m_read.pinned = m_parser.isSet("pinned");
        m_read.oldestFirst = m_parser.isSet("oldest-first");
        if (m_parser.isSet("all")) {
            m_read.liftStateAndTime();
        }
    }

    void readOutput() {
        m_read.format = choice<Arguments::Format>("format", {{"plain", Arguments::Format::plain},
                                                             {"waybar", Arguments::Format::waybar}})
                            .value_or(m_read.format);
        m_read.color = choice<Arguments::Color>("color", {{"auto", Arguments::Color::automatic},
                                                          {"always", Arguments::Color::always},
                                                          {"never", Arguments::Color::never}})
                           .value_or(m_read.color);
        m_read.json = m_parser.isSet("json");
        if (m_parser.isSet("json") && m_parser.isSet("format")) {
            fail(QStringLiteral("--json 和 --format 只能选一个"));
        }
    }

    void readLimits() {
        constexpr int longestInterval = 24 * 60 * 60;
        if (const auto limit = number("n", std::numeric_limits<int>::max())) {
            m_read.limit = static_cast<std::size_t>(*limit);
        }
        if (const auto seconds = number("interval", longestInterval)) {
            m_read.interval = std::chrono::seconds(*seconds);
        }
    }

    template <class Value>
    std::optional<Value> choice(const QString &option, const std::vector<Named<Value>> &choices) {
        if (!m_parser.isSet(option)) {
            return std::nullopt;
        }
        QStringList names;
        for (const Named<Value> &choice : choices) {
            if (choice.name == m_parser.value(option)) {
                return choice.value;
            }
            names.append(choice.name);
        }
        fail(QStringLiteral("%1 的值是 %2 之一").arg(dashed(option), names.join(u'、')));
        return std::nullopt;
    }

    std::optional<int> number(const QString &option, int largest) {
        if (!m_parser.isSet(option)) {
            return std::nullopt;
        }
        bool isNumber = false;
        const int value = m_parser.value(option).toInt(&isNumber);
        if (!isNumber || value < 1 || value > largest) {
            fail(QStringLiteral("%1 的值是 1 到 %2 的整数").arg(dashed(option)).arg(largest));
            return std::nullopt;
        }
        return value;
    }

    QCommandLineParser m_parser;
    Arguments m_read;
    QString m_error;
};

QString helpLine(const QString &left, const QString &right) {
    constexpr std::size_t leftColumns = 22;
    return QString::fromStdString(paddedTo("  " + left.toStdString(), leftColumns)) + right + u'\n';
}

} // namespace

void Arguments::liftStateAndTime() {
    status = status.value_or(TaskStatusFilter::all);
    anyTime = !recency;
}

std::expected<Arguments, QString> readArguments(const QStringList &words) {
    return ArgumentReader(words).arguments();
}

QString helpText() {
    QString text = QStringLiteral("用法：tallyview [命令] [选项]\n\n"
                                  "在终端、管道和状态栏里查看 Orvik 的任务；只读取，不写入。\n\n"
                                  "命令：\n");
    for (const CommandText &command : commandTexts()) {
        text += helpLine(command.name + u' ' + command.operand, command.help);
    }
    text += QStringLiteral("\n选项：\n");
    for (const OptionText &option : optionTexts()) {
        text += helpLine(dashed(option.name) + u' ' + option.value, option.help);
    }
    return text;
}

} // namespace tallyview
