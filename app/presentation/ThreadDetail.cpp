#include "app/presentation/ThreadDetail.h"

#include "app/model/DashboardModel.h"
#include "app/presentation/DisplayText.h"
#include "core/TextSanitizer.h"
#include "core/UnicodeText.h"

namespace tallyview {

namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t badgeIDLength = 5;

QString badge(const ThreadRecord &thread) {
    return DisplayText::isolated(TextSanitizer::projectCode(thread->project)) + u'-' +
           DisplayText::isolated(uppercased(prefixCharacters(thread.id(), badgeIDLength)));
}

QString valueOrUnknown(std::string_view text) {
    return text.empty() ? QStringLiteral("未记录") : QString::fromUtf8(text);
}

} // namespace

ThreadDetail threadDetail(const ThreadRecord &thread, bool pinned, const UtcOffset &utcOffset,
                          const ThreadFormatting::Number &number) {
    ThreadDetail detail;
    detail.exists = true;
    detail.active = matches(thread, TaskStatusFilter::running);
    detail.pinned = pinned;
    detail.badge = badge(thread);
    detail.stateLabel = detail.active ? QStringLiteral("进行中") : QStringLiteral("已完成");
    detail.title = DisplayText::excerpt(thread->title);
    detail.preview = thread->preview.empty() ? QStringLiteral("该任务没有可用的预览文本。")
                                             : DisplayText::excerpt(thread->preview);
    detail.properties = {
        {u"项目"_s, QString::fromUtf8(thread->project), false},
        {u"更新时间"_s, ThreadFormatting::full(thread->updatedAt, utcOffset), false},
        {u"来源"_s, QString::fromUtf8(thread->source)},
        {u"模型"_s, valueOrUnknown(thread->model)},
        {u"推理强度"_s, valueOrUnknown(thread->reasoningEffort)},
        {u"Token"_s, number(thread->tokensUsed)},
        {u"分支"_s, valueOrUnknown(thread->branch)},
        {u"工作目录"_s, valueOrUnknown(thread->projectPath), true, 3},
        {u"Thread ID"_s, QString::fromUtf8(thread.id()), true, 3},
    };
    return detail;
}

} // namespace tallyview
