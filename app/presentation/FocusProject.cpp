#include "app/presentation/FocusProject.h"

#include "app/presentation/DisplayText.h"

#include <utility>

namespace tallyview {

QString FocusProject::title() const {
    return m_name ? DisplayText::isolated(m_name->toStdString()) + QStringLiteral(" · 任务动态")
                  : QString();
}

void FocusProject::open(const QString &name) {
    m_model.setSelectedProject(name.toStdString());
    show(name);
}

void FocusProject::close() {
    if (m_name) {
        m_model.setSelectedProject(std::nullopt);
        forget();
    }
}

void FocusProject::forget() { show(std::nullopt); }

void FocusProject::show(std::optional<QString> name) {
    if (m_name != name) {
        m_name = std::move(name);
        emit changed();
    }
}

} // namespace tallyview
