#include "app/theme/CoveragePlane.h"

#include <algorithm>
#include <cmath>

namespace tallyview {
namespace {

constexpr int passes = 3;

/// One box of a repeated box blur: full weight up to `radius`, `edge` at the
/// one pixel beyond, so that three boxes have exactly the variance wanted.
struct Box {
    int radius;
    float edge;
    float scale;
};

Box boxFor(double sigma) {
    const double variance = sigma * sigma / passes;
    const int r = static_cast<int>(std::floor((std::sqrt(12 * variance + 1) - 1) / 2));
    const double edge =
        (2 * r + 1) * (r * (r + 1) - 3 * variance) / (6 * (variance - (r + 1.0) * (r + 1.0)));
    return {r, static_cast<float>(edge), static_cast<float>(1 / (2 * r + 1 + 2 * edge))};
}

void addRow(std::vector<float> &sum, const CoveragePlane &plane, int y, float sign) {
    if (y < 0 || y >= plane.height) {
        return;
    }
    const float *row = plane.row(y);
    for (std::size_t x = 0; x < sum.size(); ++x) {
        sum[x] += sign * row[x];
    }
}

/// Blurs down the columns. Works on whole rows, which the compiler turns into
/// vector instructions; a pass along the rows would not vectorise.
CoveragePlane boxDown(const CoveragePlane &plane, const Box &box) {
    CoveragePlane result(plane.width, plane.height);
    const std::vector<float> nothing(static_cast<std::size_t>(plane.width));
    std::vector<float> sum(nothing);
    for (int y = 0; y < box.radius; ++y) {
        addRow(sum, plane, y, 1);
    }
    for (int y = 0; y < plane.height; ++y) {
        addRow(sum, plane, y + box.radius, 1);
        const int before = y - box.radius - 1;
        const int after = y + box.radius + 1;
        const float *above = before >= 0 ? plane.row(before) : nothing.data();
        const float *below = after < plane.height ? plane.row(after) : nothing.data();
        float *out = result.row(y);
        for (std::size_t x = 0; x < sum.size(); ++x) {
            out[x] = (sum[x] + box.edge * (above[x] + below[x])) * box.scale;
        }
        addRow(sum, plane, y - box.radius, -1);
    }
    return result;
}

CoveragePlane transposed(const CoveragePlane &plane) {
    CoveragePlane result(plane.height, plane.width);
    for (int y = 0; y < plane.height; ++y) {
        const float *row = plane.row(y);
        for (int x = 0; x < plane.width; ++x) {
            result.row(x)[y] = row[x];
        }
    }
    return result;
}

/// Moves the rows down by `distance`, spreading a fraction over two rows.
CoveragePlane movedDown(const CoveragePlane &plane, double distance) {
    CoveragePlane result(plane.width, plane.height);
    const int whole = static_cast<int>(std::floor(distance));
    const auto part = static_cast<float>(distance - whole);
    const auto add = [&](int from, int to, float share) {
        if (to < 0 || to >= plane.height || share == 0) {
            return;
        }
        const float *in = plane.row(from);
        float *out = result.row(to);
        for (int x = 0; x < plane.width; ++x) {
            out[x] += share * in[x];
        }
    };
    for (int y = 0; y < plane.height; ++y) {
        add(y, y + whole, 1 - part);
        add(y, y + whole + 1, part);
    }
    return result;
}

CoveragePlane blurredDown(const CoveragePlane &plane, double sigma, double distance) {
    CoveragePlane result = distance == 0 ? plane : movedDown(plane, distance);
    if (sigma <= 0) {
        return result;
    }
    const Box box = boxFor(sigma);
    for (int pass = 0; pass < passes; ++pass) {
        result = boxDown(result, box);
    }
    return result;
}

} // namespace

int blurSpread(double sigma) { return sigma > 0 ? passes * (boxFor(sigma).radius + 1) : 0; }

CoveragePlane CoveragePlane::blurred(double sigma, QPointF shift) const {
    const CoveragePlane down = blurredDown(*this, sigma, shift.y());
    return transposed(blurredDown(transposed(down), sigma, shift.x()));
}

} // namespace tallyview
