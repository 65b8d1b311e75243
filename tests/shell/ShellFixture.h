#pragma once

#include "app/model/TaskNotificationService.h"
#include "app/platform/NotificationCenter.h"
#include "app/platform/SystemAppearance.h"
#include "app/shell/AppCommands.h"
#include "app/shell/LayoutSettings.h"
#include "app/shell/WindowAppearance.h"
#include "app/shell/WindowChrome.h"
#include "app/shell/Workspace.h"
#include "tests/shell/SceneProbe.h"
#include "tests/support/ModelFixture.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace tallyview::test {

class SilentCenter : public NotificationCenter {
public:
    void requestAuthorization(AuthorizationAnswer) override {}
    void readAuthorization(StatusAnswer) override {}
    void add(const NotificationRequest &, DeliveryOutcome) override {}
    void acknowledge(const QString &) override {}
};

class ChosenAppearance : public SystemAppearance {
public:
    bool dark() const override { return false; }
    bool highContrast() const override { return m_highContrast; }
    bool reducedMotion() const override { return m_reducedMotion; }
    WindowButtons windowButtons() const override { return m_windowButtons; }
    void setHighContrast(bool high) {
        m_highContrast = high;
        emit highContrastChanged();
    }
    void setReducedMotion(bool reduced) {
        m_reducedMotion = reduced;
        emit reducedMotionChanged();
    }
    void setWindowButtons(const QString &layout) {
        m_windowButtons = WindowButtons::fromLayout(layout);
        emit windowButtonsChanged();
    }

private:
    bool m_highContrast = false;
    bool m_reducedMotion = true;
    WindowButtons m_windowButtons = WindowButtons::all();
};

/// The application's window over threads of its own; without motion unless it is asked for.
class ShellFixture : public ModelFixture, public SceneProbe {
public:
    explicit ShellFixture(const std::vector<Sample> &samples, const QVariantMap &settings = {},
                          bool motion = false) {
        system.setReducedMotion(!motion);
        for (const auto &[key, value] : settings.asKeyValueRange()) {
            defaults.setValue(key, value);
        }
        write(samples);
        // Every warning of the engine is a fault of a view.
        QObject::connect(
            &m_engine, &QQmlEngine::warnings, &m_engine, [](const QList<QQmlError> &errors) {
                QTest::qFail(qPrintable(errors.first().toString()), __FILE__, __LINE__);
            });
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        m_engine.setInitialProperties({{"model", QVariant::fromValue(&model)},
                                       {"commands", QVariant::fromValue(&m_commands)},
                                       {"appearance", QVariant::fromValue(&appearance)},
                                       {"chrome", QVariant::fromValue(&chrome)},
                                       {"layout", QVariant::fromValue(&layout)},
                                       {"workspace", QVariant::fromValue(&workspace)}});
        m_engine.load(QUrl("qrc:/qt/qml/Orvik/Tallyview/Shell/MainWindow.qml"));
        window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
        chrome.setWindow(*window);
        window->show();
        window->requestActivate();
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(window);
        [[maybe_unused]] const bool read = QTest::qWaitFor([this] { return !model.isLoading(); });
        settle();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(window, key, modifiers);
        settle();
    }

    void toggleMode() {
        workspace.toggleMode();
        settle();
    }

    void select(const std::string &thread) {
        model.setSelectedThreadID(thread);
        settle();
    }

    /// Which of the rows' marks pulse, one "1" or "0" for each.
    QString pulses() const {
        QString result;
        for (const QQuickItem *mark : items("TaskStatusMark")) {
            result += mark->childItems().last()->opacity() < 1 ? '1' : '0';
        }
        return result;
    }

    /// The agent now has exactly these threads, and the window shows them.
    void show(const std::vector<Sample> &samples) {
        ModelFixture::show(samples);
        settle();
    }

    ChosenAppearance system;
    LayoutSettings layout{defaults};
    Workspace workspace{model, layout};
    WindowAppearance appearance{layout, system};
    WindowChrome chrome{appearance, system};

private:
    SilentCenter m_center;
    TaskNotificationService m_notifications{m_center, defaults, opener, systemNow};
    AppCommands m_commands{model, m_notifications};
    QQmlApplicationEngine m_engine;
};

} // namespace tallyview::test
