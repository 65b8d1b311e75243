#include "app/model/ThreadFormatting.h"

#include <QTest>

using namespace tallyview;

namespace {

constexpr double now = 1'709'812'800; // 2024-03-07 12:00:00 UTC

Instant at(double seconds) { return Instant(std::chrono::duration<double>(seconds)); }

} // namespace

class ThreadFormattingTest : public QObject {
    Q_OBJECT

private slots:
    void relativeAges() {
        const QTimeZone zone("Asia/Shanghai");
        const std::pair<double, const char *> ages[] = {
            {-1e9, "刚刚"},     {59.9, "刚刚"},
            {60, "1 分钟前"},   {3599.9, "59 分钟前"},
            {3600, "1 小时前"}, {86399, "23 小时前"},
            {86400, "1 天前"},  {604799, "6 天前"},
            {604800, "02/29"},  {604800 + 21 * 3600, "02/28"},
        };
        for (const auto &[age, text] : ages) {
            QCOMPARE(ThreadFormatting::relative(at(now - age), at(now), zone), text);
        }
        QCOMPARE(ThreadFormatting::relative({}, at(now), zone), "时间未知");
    }

    void fullDates() {
        QCOMPARE(ThreadFormatting::full(at(now + 0.999), QTimeZone("Asia/Shanghai")),
                 "2024/03/07 20:00");
        QCOMPARE(ThreadFormatting::full(at(now - 3 * 3600 + 300), QTimeZone::utc()),
                 "2024/03/07 09:05");
    }
};

QTEST_GUILESS_MAIN(ThreadFormattingTest)
#include "ThreadFormattingTest.moc"
