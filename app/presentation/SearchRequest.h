#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace tallyview {

/// Hears a person's wish to search, whichever menu or key it comes from. Main thread.
class SearchRequest : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool enabled MEMBER m_enabled NOTIFY enabledChanged)

public:
    explicit SearchRequest(QObject *parent = nullptr);
    ~SearchRequest() override;

    /// Tells everyone who is enabled.
    static void post();

signals:
    void enabledChanged();
    void posted();

private:
    bool m_enabled = true;
};

} // namespace tallyview
