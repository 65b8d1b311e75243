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

/// What a view is told, as texts: removed, moved, inserted and changed rows.
void record(WordList &list, QStringList &steps) {
    const auto range = [&steps](char16_t sign) {
        return [&steps, sign](const QModelIndex &, int first, int last) {
            steps.append(sign + QStringLiteral("%1..%2").arg(first).arg(last));
        };
    };
    QObject::connect(&list, &QAbstractItemModel::rowsRemoved, &list, range(u'-'));
    QObject::connect(&list, &QAbstractItemModel::rowsInserted, &list, range(u'+'));
    QObject::connect(&list, &QAbstractItemModel::rowsMoved, &list,
                     [&steps](const QModelIndex &, int from, int, const QModelIndex &, int to) {
                         steps.append(QStringLiteral("%1>%2").arg(from).arg(to));
                     });
    QObject::connect(&list, &QAbstractItemModel::dataChanged, &list,
                     [&steps](const QModelIndex &first, const QModelIndex &last) {
                         steps.append(QStringLiteral("~%1..%2").arg(first.row()).arg(last.row()));
                     });
}

class ListAdapterTest : public QObject {
    Q_OBJECT

private slots:
    void theViewIsToldTheFewestSteps() {
        const std::array<const char *, 3> cases[] = {
            {"a b c", "a b c", ""},
            {"", "a b c", "+0..2"},
            {"a b c", "", "-0..2"},
            {"a1 b1 c1", "a1 b2 c1", "~1..1"},
            {"a b c d", "b c d a", "0>4"},
            {"a b c d", "d a b c", "3>0"},
            {"a b c d", "a d c b", "2>4 1>4"},
            {"a b c d e", "b d", "-4..4 -2..2 -0..0"},
            {"b d", "a b c d e", "+0..0 +2..2 +4..4"},
            {"a1 b c", "x c y a2", "-1..1 0>2 +0..0 +2..2 ~3..3"},
        };
        for (const auto &[before, after, expected] : cases) {
            WordList list;
            list.show(words(before));
            const QAbstractItemModelTester tester(
                &list, QAbstractItemModelTester::FailureReportingMode::QtTest);
            QStringList steps;
            record(list, steps);
            list.show(words(after));
            QCOMPARE(steps.join(u' '), expected);
            QVERIFY(list.rows() == words(after));
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
                    next.push_back({QString(QChar(key)), random.bounded(2)});
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
