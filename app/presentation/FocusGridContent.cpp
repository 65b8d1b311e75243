#include "app/presentation/FocusGridContent.h"

namespace tallyview {

void FocusGridContent::setGrid(FocusGridState *grid) {
    m_grid = grid;
    follow(*grid);
}

void FocusGridContent::update() {
    m_face = m_grid->face();
    const auto &failure = model()->errorMessage();
    m_message = failure ? QString::fromStdString(*failure)
                        : QStringLiteral("Orvik 产生任务后，项目会自动出现在这里。");
    std::vector<ProjectCard> cards;
    const UtcOffset utcOffset = model()->environment().utcOffset();
    for (const ProjectSummary &project : m_grid->projects()) {
        cards.push_back(projectCard(project, m_grid->evaluatedAt(), utcOffset));
    }
    m_cards.show(std::move(cards));
}

} // namespace tallyview
