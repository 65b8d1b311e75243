#include "app/theme/SoftPalette.h"

namespace tallyview {
namespace {

QColor rgb(float red, float green, float blue, float opacity = 1) {
    return QColor::fromRgbF(red, green, blue, opacity);
}

QColor white(float opacity) { return rgb(1, 1, 1, opacity); }
QColor black(float opacity) { return rgb(0, 0, 0, opacity); }

SoftPalette lightPalette() {
    return {
        .canvas = rgb(0.945F, 0.965F, 0.972F),
        .raisedSurface = rgb(0.968F, 0.982F, 0.986F),
        .insetSurface = rgb(0.9F, 0.93F, 0.94F),
        .liftedSurface = rgb(0.982F, 0.992F, 0.995F),
        .primaryInk = rgb(0.1F, 0.15F, 0.17F),
        .secondaryInk = rgb(0.37F, 0.45F, 0.48F),
        .mutedInk = rgb(0.52F, 0.59F, 0.62F),
        .softShadowDark = rgb(0.49F, 0.58F, 0.62F, 0.23F),
        .softShadowLight = white(0.95F),
        .rimLight = white(0.86F),
        .hairline = black(0.075F),
        .knobFill = rgb(0.98F, 0.95F, 0.88F, 0.96F),
        .knobRim = rgb(0.77F, 0.72F, 0.64F, 0.28F),
        .knobShadow = black(0.14F),
    };
}

/// The highlight and the rim are nearly invisible here: the dark look rests on
/// the black shadow alone.
SoftPalette darkPalette() {
    return {
        .canvas = rgb(0.075F, 0.105F, 0.12F),
        .raisedSurface = rgb(0.102F, 0.14F, 0.16F),
        .insetSurface = rgb(0.055F, 0.078F, 0.09F),
        .liftedSurface = rgb(0.125F, 0.17F, 0.19F),
        .primaryInk = rgb(0.92F, 0.96F, 0.97F),
        .secondaryInk = rgb(0.6F, 0.69F, 0.72F),
        .mutedInk = rgb(0.45F, 0.54F, 0.57F),
        .softShadowDark = black(0.42F),
        .softShadowLight = white(0.025F),
        .rimLight = white(0.08F),
        .hairline = white(0.1F),
        .knobFill = rgb(0.97F, 0.94F, 0.86F, 0.68F),
        .knobRim = white(0.18F),
        .knobShadow = black(0.34F),
    };
}

SoftPalette lightContrast() {
    SoftPalette palette = lightPalette();
    palette.primaryInk = black(1);
    palette.secondaryInk = rgb(0.2F, 0.26F, 0.28F);
    palette.mutedInk = rgb(0.27F, 0.33F, 0.36F);
    palette.rimLight = palette.hairline = black(0.5F);
    palette.knobFill = palette.knobRim = palette.secondaryInk;
    palette.accent = rgb(0.05F, 0.17F, 0.55F);
    palette.running = rgb(0.0F, 0.36F, 0.25F);
    palette.warning = rgb(0.7F, 0.12F, 0.08F);
    return palette;
}

SoftPalette darkContrast() {
    SoftPalette palette = darkPalette();
    palette.primaryInk = white(1);
    palette.secondaryInk = rgb(0.84F, 0.9F, 0.92F);
    palette.mutedInk = rgb(0.76F, 0.83F, 0.86F);
    palette.rimLight = palette.hairline = white(0.45F);
    palette.accent = rgb(0.68F, 0.81F, 1.0F);
    palette.accentInk = black(1);
    palette.running = rgb(0.38F, 0.9F, 0.7F);
    palette.warning = rgb(1.0F, 0.62F, 0.57F);
    return palette;
}

} // namespace

const SoftPalette &SoftPalette::of(bool dark, bool highContrast) {
    static const SoftPalette palettes[] = {lightPalette(), darkPalette(), lightContrast(),
                                           darkContrast()};
    return palettes[(dark ? 1 : 0) + (highContrast ? 2 : 0)];
}

} // namespace tallyview
