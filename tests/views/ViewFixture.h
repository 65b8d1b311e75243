#pragma once

#include "tests/model/ModelFixture.h"

#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Orvik_Tallyview_ViewsPlugin)

namespace tallyview::test {

/// A window that shows one view over a model of its own, as the application's window does.
class ViewFixture : public ModelFixture {
public:
    /// `view` is QML of one view; it reads the model as `dashboard`.
    explicit ViewFixture(const QByteArray &view, QSize size = {900, 700}) {
        // Every warning of the engine is a fault of a view.
        QObject::connect(&m_engine, &QQmlEngine::warnings, &m_engine,
                         [](const QList<QQmlError> &errors) {
                             QTest::qFail(qPrintable(errors.first().toString()), __FILE__, __LINE__);
                         });
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\n"
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
        window.reset(qobject_cast<QQuickWindow *>(component.createWithInitialProperties(
            {{QStringLiteral("dashboard"), QVariant::fromValue(&model)}})));
        if (!window) {
            qFatal("%s", qPrintable(component.errorString()));
        }
        window->resize(size);
        window->show();
        [[maybe_unused]] const bool exposed = QTest::qWaitForWindowExposed(window.get());
    }

    /// Lets the adapters and the scene follow the model.
    void settle() const {
        QCoreApplication::processEvents();
        window->grabWindow();
        QCoreApplication::processEvents();
    }

    /// The visible items of a QML type, in the order of the tree.
    QList<QQuickItem *> items(const QString &type) const {
        QList<QQuickItem *> found;
        collect(window->contentItem(), type, found);
        return found;
    }
    QQuickItem *item(const QString &type) const {
        const auto found = items(type);
        return found.isEmpty() ? nullptr : found.first();
    }
    /// The visible text that reads `text`.
    QQuickItem *text(const QString &text) const {
        for (QQuickItem *candidate : items(QStringLiteral("SoftText"))) {
            if (candidate->property("text") == text) {
                return candidate;
            }
        }
        return nullptr;
    }
    /// Where an item stands in the window, as "x y w h".
    static QString place(const QQuickItem *item) {
        const QRectF rect = item->mapRectToScene(item->boundingRect());
        return QStringLiteral("%1 %2 %3 %4")
            .arg(rect.x())
            .arg(rect.y())
            .arg(rect.width())
            .arg(rect.height());
    }
    QColor pixel(int x, int y) const { return window->grabWindow().pixelColor(x, y); }
    void click(const QQuickItem *item) const {
        QTest::mouseClick(window.get(), Qt::LeftButton, {},
                          item->mapRectToScene(item->boundingRect()).center().toPoint());
        settle();
    }

private:
    static void collect(QQuickItem *item, const QString &type, QList<QQuickItem *> &found) {
        if (!item->isVisible()) {
            return;
        }
        const QString name = QString::fromLatin1(item->metaObject()->className());
        if (name.section(QStringLiteral("_QML"), 0, 0) == type) {
            found.append(item);
        }
        for (QQuickItem *child : item->childItems()) {
            collect(child, type, found);
        }
    }

    QQmlEngine m_engine;

public:
    std::unique_ptr<QQuickWindow> window;
};

} // namespace tallyview::test
