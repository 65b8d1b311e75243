#pragma once

#include "tests/model/ModelFixture.h"
#include "tests/views/SceneProbe.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ViewsPlugin)

namespace tallyview::test {

/// A window that shows one view over a model of its own, as the application's window does.
class ViewFixture : public ModelFixture, public SceneProbe {
public:
    /// `view` is QML of one view; it reads the model as `dashboard`.
    explicit ViewFixture(const QByteArray &view, QSize size = {900, 700}) {
        // Every warning of the engine is a fault of a view.
        QObject::connect(
            &m_engine, &QQmlEngine::warnings, &m_engine, [](const QList<QQmlError> &errors) {
                QTest::qFail(qPrintable(errors.first().toString()), __FILE__, __LINE__);
            });
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData(
            "import QtQuick\n"
            "import Orvik.Tallyview.Model\n"
            "import Orvik.Tallyview.Theme\n"
            "import Orvik.Tallyview.Views\n"
            "Window {\n"
            "    id: window\n"
            "    required property DashboardModel dashboard\n"
            "    property bool dark: false\n"
            "    property bool reducedMotion: true\n"
            "    Binding { target: SoftTheme; property: 'dark'; value: window.dark }\n"
            "    Binding { target: SoftTheme; property: 'reducedMotion'\n"
            "              value: window.reducedMotion }\n" +
                view + "\n}",
            QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(component.createWithInitialProperties(
            {{QStringLiteral("dashboard"), QVariant::fromValue(&model)}})));
        if (!m_window) {
            qFatal("%s", qPrintable(component.errorString()));
        }
        window = m_window.get();
        window->resize(size);
        window->show();
        [[maybe_unused]] const bool exposed = QTest::qWaitForWindowExposed(window);
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

} // namespace tallyview::test
