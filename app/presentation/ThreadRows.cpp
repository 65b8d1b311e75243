#include "app/presentation/ThreadRows.h"

#include "app/model/DashboardModel.h"
#include "app/presentation/DisplayText.h"
#include "app/presentation/ThreadFormatting.h"
#include "core/TextSanitizer.h"
#include "core/UnicodeText.h"

namespace tallyview {

namespace {

QString metaLine(const ThreadRecord &thread) {
    return QStringList{DisplayText::isolated(TextSanitizer::projectCode(thread->project)),
                       DisplayText::isolated(uppercased(thread->project)),
                       DisplayText::isolated(uppercased(thread->source))}
        .join(QStringLiteral(" / "));
}

} // namespace

TaskRow taskRow(const ThreadRecord &thread, const ThreadTimeGroup &group, Instant now,
                const UtcOffset &utcOffset) {
    TaskRow row;
    row.key = QString::fromStdString(group.id) + u'/' + QString::fromUtf8(thread.id());
    row.title = DisplayText::oneLine(thread->title);
    row.meta = metaLine(thread);
    row.age = ThreadFormatting::relative(thread->updatedAt, now, utcOffset);
    row.active = matches(thread, TaskStatusFilter::running);
    row.stateLabel = row.active ? QStringLiteral("进行中") : QStringLiteral("已完成");
    row.openLabel = QStringLiteral("在 Orvik 中打开 ") + row.title;
    return row;
}

TimeGroupRow timeGroupRow(const ThreadTimeGroup &group) {
    TimeGroupRow row;
    row.key = QString::fromStdString(group.id);
    row.title = QString::fromStdString(group.title);
    row.count = QString::number(group.threads.size());
    return row;
}

QString emptyListTitle() { return QStringLiteral("没有匹配的任务"); }

} // namespace tallyview
