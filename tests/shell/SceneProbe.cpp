#include "tests/shell/SceneProbe.h"

#include "app/theme/SoftFont.h"
#include "app/theme/SoftPalette.h"

#include <QCoreApplication>
#include <QImage>
#include <QRegularExpression>
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

QString role(const QColor &color, bool dark) {
    const SoftPalette &palette = SoftPalette::of(dark);
    const std::pair<const char *, QColor> roles[] = {
        {"accent", softcolor::accent},
        {"running", softcolor::running},
        {"warning", softcolor::warning},
        {"canvas", palette.canvas},
        {"raisedSurface", palette.raisedSurface},
        {"insetSurface", palette.insetSurface},
        {"liftedSurface", palette.liftedSurface},
        {"primaryInk", palette.primaryInk},
        {"secondaryInk", palette.secondaryInk},
        {"mutedInk", palette.mutedInk},
        {"softShadowDark", palette.softShadowDark},
        {"softShadowLight", palette.softShadowLight},
        {"rimLight", palette.rimLight},
        {"hairline", palette.hairline},
        {"white", softcolor::accentInk},
    };
    for (const auto &[name, wanted] : roles) {
        if (color.rgba() == wanted.rgba()) {
            return QString::fromLatin1(name);
        }
    }
    for (const auto &[name, wanted] : roles) {
        if (color.rgb() == wanted.rgb()) {
            const double opacity = double(color.alphaF()) / double(wanted.alphaF());
            return QStringLiteral("%1@%2").arg(QLatin1String(name)).arg(opacity, 0, 'g', 2);
        }
    }
    return color.name(QColor::HexArgb);
}

QString textLook(const QQuickItem *item, bool dark) {
    static const char *const designs[] = {"system", "rounded", "monospaced"};
    const QString look = QStringLiteral("text \"%1\" %2 %3 %4 %5")
                             .arg(item->property("text").toString())
                             .arg(item->property("size").toDouble())
                             .arg(item->property("weight").toInt())
                             .arg(QLatin1String(designs[item->property("design").toInt()]),
                                  role(item->property("color").value<QColor>(), dark));
    const int lines = item->property("maximumLineCount").toInt();
    return lines < 100 ? look + QStringLiteral(" lines %1").arg(lines) : look;
}

QString symbolLook(const QQuickItem *item, bool dark) {
    return QStringLiteral("symbol %1 %2 %3 %4")
        .arg(item->property("name").toString())
        .arg(item->property("size").toDouble())
        .arg(item->property("weight").toInt())
        .arg(role(item->property("color").value<QColor>(), dark));
}

QString shadowLook(const QQuickItem *item, const char *property, bool dark) {
    const auto *shadow = item->property(property).value<QObject *>();
    const auto color = shadow->property("color").value<QColor>();
    if (color.alpha() == 0) {
        return {};
    }
    return QStringLiteral(" shadow %1 %2 %3 %4")
        .arg(role(color, dark))
        .arg(shadow->property("blur").toDouble())
        .arg(shadow->property("x").toDouble())
        .arg(shadow->property("y").toDouble());
}

QString surfaceLook(const QQuickItem *item, bool dark) {
    QString look = QStringLiteral("surface %1x%2 radius %3 ")
                       .arg(item->width())
                       .arg(item->height())
                       .arg(item->property("radius").toDouble());
    if (!item->property("continuous").toBool()) {
        look += QStringLiteral("circular ");
    }
    const auto fill = item->property("fill").value<QColor>();
    look += fill.alpha() == 0 ? QStringLiteral("clear") : role(fill, dark);
    const auto outline = item->property("outline").value<QColor>();
    if (outline.alpha() != 0) {
        const double width = item->property("outlineWidth").toDouble();
        look += width == 1 ? QStringLiteral(" rim ") : QStringLiteral(" rim %1 ").arg(width);
        look += role(outline, dark);
    }
    return look + shadowLook(item, "darkShadow", dark) + shadowLook(item, "lightShadow", dark);
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
        if (const QString type = typeOf(piece); type == "SoftText" || type == "SoftParagraph") {
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

QString SceneProbe::looks(const QQuickItem *item, bool dark) {
    QStringList lines;
    visit(item, [&](const QQuickItem *piece) {
        if (piece->inherits("tallyview::SoftSymbol")) {
            lines.append(symbolLook(piece, dark));
        } else if (piece->inherits("tallyview::SoftSurface")) {
            lines.append(surfaceLook(piece, dark));
        } else if (const QString type = typeOf(piece);
                   type == QLatin1String("SoftText") || type == QLatin1String("SoftParagraph")) {
            lines.append(textLook(piece, dark));
        }
    });
    return lines.join(u'\n');
}

bool SceneProbe::matches(const QString &actual, const QString &wanted) {
    const QStringList lines = actual.split(u'\n');
    const QStringList patterns = wanted.trimmed().split(u'\n');
    for (qsizetype i = 0; i < std::max(lines.size(), patterns.size()); ++i) {
        QString pattern = QRegularExpression::escape(patterns.value(i));
        pattern.replace(QStringLiteral("\\*"), QStringLiteral(".*"));
        const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
        if (!whole.match(lines.value(i)).hasMatch()) {
            qWarning("line %d is: %s\nand not: %s", int(i), qPrintable(lines.value(i)),
                     qPrintable(patterns.value(i)));
            return false;
        }
    }
    return true;
}

} // namespace tallyview::test
