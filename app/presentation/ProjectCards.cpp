#include "app/presentation/ProjectCards.h"

#include "app/presentation/DisplayText.h"
#include "app/presentation/ThreadFormatting.h"
#include "core/TextSanitizer.h"

namespace tallyview {

ProjectCard projectCard(const ProjectSummary &project, Instant now, const UtcOffset &utcOffset) {
    ProjectCard card;
    card.key = QString::fromStdString(project.name);
    card.name = DisplayText::oneLine(project.name);
    card.code = QString::fromStdString(TextSanitizer::projectCode(project.name));
    card.updated = QStringLiteral("最近更新 ") +
                   ThreadFormatting::relative(project.lastUpdated, now, utcOffset);
    const QString running = QString::number(project.runningCount);
    card.running = running + QStringLiteral(" 进行中");
    card.completed = QString::number(project.completedCount) + QStringLiteral(" 已完成");
    card.count = QString::number(project.count) + QStringLiteral(" 个任务");
    card.label = card.name + u'，' + running + QStringLiteral(" 个进行中，") + card.count;
    card.helpText = QStringLiteral("进入 ") + DisplayText::isolated(project.name) +
                    QStringLiteral(" 的任务动态");
    return card;
}

} // namespace tallyview
