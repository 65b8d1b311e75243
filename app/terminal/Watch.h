#pragma once

#include "app/terminal/Listing.h"
#include "app/terminal/Output.h"
#include "app/terminal/Screen.h"
#include "app/terminal/ThreadTable.h"

#include <QObject>

#include <optional>

namespace tallyview {

/// Follows the model for as long as it is monitored: on a screen it keeps the list on it,
/// elsewhere, and with JSON, it writes one line per thread that starts or completes. A failure to
/// read is told once until it is another one. Main thread.
class Watch : public QObject {
    Q_OBJECT

public:
    /// The filters of `arguments` have been applied to the model. All outlive this object.
    Watch(DashboardModel &model, const Arguments &arguments, Output &output, Paint paint);

signals:
    /// Nobody reads any more, or the output cannot be written.
    void ended();

private:
    void followReader();
    void showRefresh();
    void draw();
    void writeChanges();
    void writeChange(const ThreadRecord &thread);

    DashboardModel &m_model;
    const Arguments &m_arguments;
    Output &m_output;
    Paint m_paint;
    std::optional<Screen> m_screen;
    std::optional<std::string> m_told; ///< why reading failed
    std::optional<TextSet> m_running;  ///< in the list before
    std::size_t m_left;                ///< lines to be written before the end
};

} // namespace tallyview
