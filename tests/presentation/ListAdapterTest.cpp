#include "app/presentation/ListAdapter.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <array>

namespace tallyview::test {

struct Word {
    Q_GADGET
public:
    QString key;
    int version = 0;

    friend bool operator==(const Word &, const Word &) = default;
};

class WordList : public ListAdapter<Word> {
    Q_OBJECT
};

std::vector<QString> keys(const QString &text) {
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    return {words.begin(), words.end()};
}

class ListAdapterTest : public QObject {
    Q_OBJECT

private slots:
    void theFewestStepsLeadFromListToList() {
        // How often rows are removed, moved and inserted.
        const std::tuple<const char *, const char *, std::array<int, 3>> cases[] = {
            {"a b c", "a b c", {0, 0, 0}},     {"", "a b c", {0, 0, 1}},
            {"a b c d", "b c d a", {0, 1, 0}}, {"a b c d", "d a b c", {0, 1, 0}},
            {"a b c d", "a d c b", {0, 2, 0}}, {"a b c d e", "b d", {3, 0, 0}},
            {"b d", "a b c d e", {0, 0, 3}},   {"a b c", "x c y a", {1, 1, 2}},
        };
        for (const auto &[before, after, expected] : cases) {
            std::array<int, 3> counts{};
            for (const ListStep &step : listSteps(keys(before), keys(after))) {
                ++counts.at(static_cast<std::size_t>(step.kind));
            }
            QVERIFY2(counts == expected, before);
        }
    }

    void anyListTurnsIntoAnyOther() {
        QRandomGenerator random(7);
        WordList list;
        const QAbstractItemModelTester tester(
            &list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        for (int round = 0; round < 500; ++round) {
            std::vector<Word> next;
            for (char16_t key = u'a'; key <= u'z'; ++key) {
                if (random.bounded(3) != 0) {
                    next.push_back({QChar(key), random.bounded(2)});
                }
            }
            const auto shuffled = random.bounded(static_cast<int>(next.size()) + 1);
            std::shuffle(next.begin(), next.begin() + shuffled, random);
            list.show(next);
            QVERIFY(list.rows() == next);
        }
    }
};

} // namespace tallyview::test

QTEST_GUILESS_MAIN(tallyview::test::ListAdapterTest)
#include "ListAdapterTest.moc"
