#include "app/presentation/ThreadDetail.h"

#include "app/model/DashboardModel.h"
#include "app/presentation/DisplayText.h"
#include "core/TextSanitizer.h"
#include "core/UnicodeText.h"

namespace tallyview {

namespace {

constexpr std::size_t badgeIDLength = 5;

QString badge(const ThreadRecord &thread) {
    return DisplayText::isolated(TextSanitizer::projectCode(thread->project)) + u'-' +
           DisplayText::isolated(uppercased(prefixCharacters(thread.id(), badgeIDLength)));
}

QString valueOrUnknown(const std::string &text) {
    return text.empty() ? QStringLiteral("未记录") : QString::fromStdString(text);
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
    detail.project.value = QString::fromStdString(thread->project);
    detail.updated.value = ThreadFormatting::full(thread->updatedAt, utcOffset);
    detail.source.value = QString::fromStdString(thread->source);
    detail.model.value = valueOrUnknown(thread->model);
    detail.effort.value = valueOrUnknown(thread->reasoningEffort);
    detail.tokens.value = number(thread->tokensUsed);
    detail.branch.value = valueOrUnknown(thread->branch);
    detail.directory.value = valueOrUnknown(thread->projectPath);
    detail.threadID.value = QString::fromStdString(thread.id());
    return detail;
}

} // namespace tallyview
