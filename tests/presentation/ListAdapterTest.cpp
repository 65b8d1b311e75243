#include "app/presentation/ListAdapter.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
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

std::vector<Word> words(const QString &text) {
    std::vector<Word> result;
    for (const QString &word : text.split(u' ', Qt::SkipEmptyParts)) {
        result.push_back({word.left(1), word.mid(1).toInt()});
    }
    return result;
}

class ListAdapterTest : public QObject {
    Q_OBJECT

private slots:
    void theViewIsToldTheFewestSteps() {
        // How often rows are removed, moved, inserted and changed.
        const std::array<const char *, 3> cases[] = {
            {"a b c", "a b c", "0 0 0 0"},       {"", "a b c", "0 0 1 0"},
            {"a1 b1 c1", "a1 b2 c1", "0 0 0 1"}, {"a b c d", "b c d a", "0 1 0 0"},
            {"a b c d", "d a b c", "0 1 0 0"},   {"a b c d", "a d c b", "0 2 0 0"},
            {"a b c d e", "b d", "3 0 0 0"},     {"b d", "a b c d e", "0 0 3 0"},
            {"a1 b c", "x c y a2", "1 1 2 1"},
        };
        for (const auto &[before, after, expected] : cases) {
            WordList list;
            list.show(words(before));
            const QSignalSpy removals(&list, &WordList::rowsRemoved);
            const QSignalSpy moves(&list, &WordList::rowsMoved);
            const QSignalSpy insertions(&list, &WordList::rowsInserted);
            const QSignalSpy changes(&list, &WordList::dataChanged);
            list.show(words(after));
            QStringList steps;
            for (const QSignalSpy *spy : {&removals, &moves, &insertions, &changes}) {
                steps.append(QString::number(spy->count()));
            }
            QCOMPARE(steps.join(u' '), expected);
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
