#pragma once

#include <QPointF>

#include <cstddef>
#include <vector>

namespace tallyview {

/// How much of each pixel a drawing covers, 0 to 1, row by row. Plain value,
/// any thread.
struct CoveragePlane {
    int width = 0;
    int height = 0;
    std::vector<float> values;

    CoveragePlane(int columns, int rows)
        : width(columns)
        , height(rows)
        , values(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

    float *row(int y) { return values.data() + offset(y); }
    const float *row(int y) const { return values.data() + offset(y); }

    /// This plane blurred by a Gaussian-like kernel of standard deviation
    /// `sigma` pixels and then moved by `shift` pixels. What leaves the plane
    /// is lost: leave `blurSpread` and the shift around the drawing.
    CoveragePlane blurred(double sigma, QPointF shift) const;

private:
    std::size_t offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

/// Whole pixels that a blur of `sigma` reaches beyond the drawing; exact.
int blurSpread(double sigma);

} // namespace tallyview
