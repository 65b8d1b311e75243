#include "app/model/ListAdapter.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <numeric>

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

/// What a view was told, as one text: removed, moved, inserted and changed rows.
class Log {
public:
    explicit Log(WordList &list) {
        QObject::connect(&list, &QAbstractItemModel::rowsRemoved, &m_context,
                         [this](const QModelIndex &, int first, int last) {
                             append(QStringLiteral("-%1..%2").arg(first).arg(last));
                         });
        QObject::connect(&list, &QAbstractItemModel::rowsMoved, &m_context,
                         [this](const QModelIndex &, int from, int, const QModelIndex &, int to) {
                             append(QStringLiteral("%1>%2").arg(from).arg(to));
                         });
        QObject::connect(&list, &QAbstractItemModel::rowsInserted, &m_context,
                         [this](const QModelIndex &, int first, int last) {
                             append(QStringLiteral("+%1..%2").arg(first).arg(last));
                         });
        QObject::connect(&list, &QAbstractItemModel::dataChanged, &m_context,
                         [this](const QModelIndex &first, const QModelIndex &last) {
                             append(QStringLiteral("~%1..%2").arg(first.row()).arg(last.row()));
                         });
    }
    QString take() { return std::exchange(m_steps, {}).join(u' '); }
    int moves() const { return static_cast<int>(m_steps.filter(QStringLiteral(">")).size()); }

private:
    void append(const QString &step) { m_steps.append(step); }

    QObject m_context;
    QStringList m_steps;
};

class ListAdapterTest : public QObject {
    Q_OBJECT

private slots:
    void theViewIsToldTheFewestSteps_data() {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("steps");
        QTest::newRow("nothing") << "a b c"
                                 << "a b c"
                                 << "";
        QTest::newRow("fill") << ""
                              << "a b c"
                              << "+0..2";
        QTest::newRow("clear") << "a b c"
                               << ""
                               << "-0..2";
        QTest::newRow("one changed") << "a1 b1 c1"
                                     << "a1 b2 c1"
                                     << "~1..1";
        QTest::newRow("first moves last") << "a b c d"
                                          << "b c d a"
                                          << "0>4";
        QTest::newRow("last moves first") << "a b c d"
                                          << "d a b c"
                                          << "3>0";
        QTest::newRow("swap") << "a b c d"
                              << "a d c b"
                              << "2>4 1>4";
        QTest::newRow("remove around") << "a b c d e"
                                       << "b d"
                                       << "-4..4 -2..2 -0..0";
        QTest::newRow("insert around") << "b d"
                                       << "a b c d e"
                                       << "+0..0 +2..2 +4..4";
        QTest::newRow("everything") << "a1 b c"
                                    << "x c y a2"
                                    << "-1..1 0>2 +0..0 +2..2 ~3..3";
    }
    void theViewIsToldTheFewestSteps() {
        QFETCH(QString, before);
        QFETCH(QString, after);
        WordList list;
        list.show(words(before));
        const QAbstractItemModelTester tester(
            &list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        Log log(list);
        list.show(words(after));
        QTEST(log.take(), "steps");
        QVERIFY(list.rows() == words(after));
    }

    void anyListTurnsIntoAnyOther() {
        QRandomGenerator random(7);
        WordList list;
        const QAbstractItemModelTester tester(
            &list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        Log log(list);
        for (int round = 0; round < 500; ++round) {
            std::vector<Word> next;
            for (char16_t key = u'a'; key <= u'z'; ++key) {
                if (random.bounded(3) != 0) {
                    next.push_back({QString(QChar(key)), random.bounded(2)});
                }
            }
            const auto shuffled = random.bounded(static_cast<int>(next.size()) + 1);
            std::shuffle(next.begin(), next.begin() + shuffled, random);
            const int kept = static_cast<int>(
                std::count_if(list.rows().begin(), list.rows().end(), [&](const Word &word) {
                    return std::any_of(next.begin(), next.end(),
                                       [&](const Word &other) { return other.key == word.key; });
                }));
            log.take();
            list.show(next);
            QVERIFY(list.rows() == next);
            QVERIFY(log.moves() <= std::max(0, kept - 1));
        }
    }
};

} // namespace tallyview::test

QTEST_GUILESS_MAIN(tallyview::test::ListAdapterTest)
#include "ListAdapterTest.moc"
