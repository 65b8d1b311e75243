#include "app/theme/SoftFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QRawFont>
#include <QScreen>

#include <algorithm>
#include <array>
#include <cmath>

namespace tallyview {
namespace {

constexpr char32_t hanProbe = U'直';

QString simplifiedChinese() { return QStringLiteral("Noto Sans CJK SC"); }
QString colorEmoji() { return QStringLiteral("Noto Color Emoji"); }

/// Names that stand for "whatever fontconfig likes" rather than for a face.
bool isGenericAlias(const QString &family) {
    static const QStringList aliases = {
        QString(),
        QStringLiteral("sans"),
        QStringLiteral("sans serif"),
        QStringLiteral("sans-serif"),
        QStringLiteral("system-ui"),
        QStringLiteral("ui-sans-serif"),
        QStringLiteral("mono"),
        QStringLiteral("monospace"),
        QStringLiteral("ui-monospace"),
    };
    return aliases.contains(family, Qt::CaseInsensitive);
}

bool coversHan(const QString &family) {
    const QRawFont raw = QRawFont::fromFont(QFont(family));
    return raw.isValid() && raw.familyName().compare(family, Qt::CaseInsensitive) == 0 &&
           raw.supportsCharacter(hanProbe);
}

/// Faces for several regions declare every Han language, so only the name
/// tells; a face that does not declare Japanese is Chinese anyway.
bool drawsSimplifiedForms(const QString &family) {
    const QStringList words = family.split(u' ');
    if (words.contains(u"SC") || words.contains(u"CN") || words.contains(u"GB")) {
        return true;
    }
    const auto systems = QFontDatabase::writingSystems(family);
    return systems.contains(QFontDatabase::SimplifiedChinese) &&
           !systems.contains(QFontDatabase::TraditionalChinese) &&
           !systems.contains(QFontDatabase::Japanese);
}

bool isUsable(const QString &family) {
    return !isGenericAlias(family) && QFontDatabase::hasFamily(family) &&
           (!coversHan(family) || drawsSimplifiedForms(family));
}

/// The first of `candidates` that is installed and safe, or nothing.
QStringList firstUsable(const QStringList &candidates) {
    const auto found = std::ranges::find_if(candidates, isUsable);
    return found == candidates.end() ? QStringList() : QStringList(*found);
}

QStringList systemCandidates(const QString &desktopFamily) {
    return {desktopFamily, QStringLiteral("Inter"), QFontInfo(QFont(desktopFamily)).family(),
            QStringLiteral("DejaVu Sans")};
}

QStringList candidates(const QString &desktopFamily, SoftFont::Design design) {
    switch (design) {
    case SoftFont::Rounded:
        return QStringList{QStringLiteral("Nunito"), QStringLiteral("Varela Round"),
                           QStringLiteral("Quicksand")} +
               systemCandidates(desktopFamily);
    case SoftFont::Monospaced:
        return {desktopFamily, QFontInfo(QFont(desktopFamily)).family(),
                QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Noto Sans Mono"),
                QStringLiteral("Liberation Mono")};
    case SoftFont::System:
        break;
    }
    return systemCandidates(desktopFamily);
}

QStringList desktopFamilies(SoftFont::Design design) {
    const auto role =
        design == SoftFont::Monospaced ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont;
    return SoftFont::familiesFor(QFontDatabase::systemFont(role).family(), design);
}

/// A pixel size is a whole number in QFont; only typographic points, which the
/// primary screen's resolution turns back into pixels, can carry a fraction.
void setSize(QFont &font, qreal size) {
    if (size == std::floor(size)) {
        font.setPixelSize(static_cast<int>(size));
        return;
    }
    const QScreen *screen = QGuiApplication::primaryScreen();
    font.setPointSizeF(size * 72.0 / (screen ? screen->logicalDotsPerInchY() : 96.0));
}

} // namespace

QStringList SoftFont::familiesFor(const QString &desktopFamily, Design design) {
    QStringList families = firstUsable(candidates(desktopFamily, design));
    families.removeAll(simplifiedChinese());
    return families << simplifiedChinese() << colorEmoji();
}

const QStringList &SoftFont::families(Design design) {
    static const std::array<QStringList, 3> all = {
        desktopFamilies(System), desktopFamilies(Rounded), desktopFamilies(Monospaced)};
    return all.at(static_cast<std::size_t>(design));
}

QFont SoftFont::font(qreal size, int weight, Design design) {
    QFont font;
    font.setFamilies(families(design));
    font.setStyleHint(design == Monospaced ? QFont::Monospace : QFont::SansSerif);
    font.setWeight(static_cast<QFont::Weight>(weight));
    setSize(font, size);
    return font;
}

} // namespace tallyview
