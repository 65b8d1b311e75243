#include "tests/shell/SceneProbe.h"

#include "app/theme/SoftTheme.h"

#include <QCoreApplication>
#include <QImage>
#include <QMetaProperty>
#include <QTest>

namespace tallyview::test {
namespace {

void visit(const QQuickItem *item, const std::function<void(QQuickItem *)> &action) {
    if (!item->isVisible()) {
        return;
    }
    action(const_cast<QQuickItem *>(item));
    for (const QQuickItem *child : item->childItems()) {
        visit(child, action);
    }
}

/// The name of `color` in the light theme; one that differs in its opacity alone has that added.
QString role(const QColor &color) {
    const SoftTheme theme;
    QString found = color.alpha() == 0 ? "clear" : color.name(QColor::HexArgb);
    const QMetaObject &meta = SoftTheme::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QString name = meta.property(i).name();
        const auto wanted = meta.property(i).read(&theme).value<QColor>();
        if (wanted.isValid() && color.rgba() == wanted.rgba()) {
            return name;
        }
        if (wanted.isValid() && color.rgb() == wanted.rgb() && found.startsWith(u'#')) {
            const double opacity = double(color.alphaF()) / double(wanted.alphaF());
            found = QStringLiteral("%1@%2").arg(name).arg(opacity, 0, 'g', 2);
        }
    }
    return found;
}

/// The kind and the values that decide the look of a text, a symbol, a surface or its shadow.
QString look(const QObject &piece) {
    using Names = std::vector<const char *>;
    static const std::tuple<const char *, QString, Names> kinds[] = {
        {"QQuickText", "Text", {"text", "size", "weight", "design", "maximumLineCount", "color"}},
        {"tallyview::SoftSymbol", "Symbol", {"name", "size", "weight", "color"}},
        {"tallyview::SurfaceShadow", "shadow", {"color", "blur", "x", "y"}},
        {"tallyview::SoftSurface",
         "Surface",
         {"width", "height", "radius", "continuous", "fill", "outline", "outlineWidth",
          "darkShadow", "lightShadow"}}};
    QString result;
    for (const auto &[type, kind, properties] : kinds) {
        for (const char *property : piece.inherits(type) ? properties : Names()) {
            const QVariant value = piece.property(property);
            const auto *part = value.value<QObject *>();
            result = (result.isEmpty() ? kind : result) + u' ' +
                     (part                                  ? look(*part)
                      : value.typeId() == QMetaType::QColor ? role(value.value<QColor>())
                      : value.typeId() == QMetaType::Double ? QString::number(value.toDouble())
                                                            : value.toString());
        }
    }
    return result;
}

} // namespace

QString SceneProbe::typeOf(const QQuickItem *item) {
    QString name = QString::fromLatin1(item->metaObject()->className());
    return name.section(QStringLiteral("_QML"), 0, 0).section(QStringLiteral("::"), -1);
}

void SceneProbe::settle() const {
    QCoreApplication::processEvents();
    window->grabWindow();
    QCoreApplication::processEvents();
}

QList<QQuickItem *> SceneProbe::items(const QString &type) const {
    QList<QQuickItem *> found;
    visit(window->contentItem(), [&](QQuickItem *item) {
        if (typeOf(item) == type) {
            found.append(item);
        }
    });
    return found;
}

QQuickItem *SceneProbe::found(const QString &type, const char *property,
                              const QString &value) const {
    for (QQuickItem *item : items(type)) {
        if (item->property(property).toString() == value) {
            return item;
        }
    }
    return nullptr;
}

QString SceneProbe::texts(const QQuickItem *item) {
    QStringList found;
    visit(item, [&](const QQuickItem *piece) {
        if (piece->inherits("QQuickText")) {
            found.append(piece->property("text").toString());
        }
    });
    return found.join(u'|');
}

QRectF SceneProbe::rect(const QQuickItem *item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

QColor SceneProbe::pixel(int x, int y) const { return window->grabWindow().pixelColor(x, y); }

void SceneProbe::click(const QQuickItem *item) const {
    QTest::mouseClick(window, Qt::LeftButton, {}, rect(item).center().toPoint());
    settle();
}

QStringList SceneProbe::looks(const QQuickItem *item) {
    QStringList lines;
    visit(item, [&lines](const QQuickItem *piece) { lines.append(look(*piece)); });
    lines.removeAll(QString());
    return lines;
}

} // namespace tallyview::test
