#include "app/drawing/CoveragePlane.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>
#include <utility>

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

/// A distance as whole pixels and the rest, 0 to 1, which is spread over two.
struct Shift {
    int whole;
    float part;

    explicit Shift(double distance)
        : whole(static_cast<int>(std::floor(distance)))
        , part(static_cast<float>(distance - whole)) {}
};

using Line = std::vector<float>;

/// `line` holds the row between two margins of zeros as wide as a box reaches,
/// so that no sample needs a check.
void boxAlong(const Line &line, Line &result, int margin, const Box &box) {
    const float *in = line.data();
    const auto end = static_cast<int>(line.size()) - margin;
    float sum = 0;
    for (int x = margin - box.radius; x < margin + box.radius; ++x) {
        sum += in[x];
    }
    for (int x = margin; x < end; ++x) {
        sum += in[x + box.radius];
        const float edges = in[x - box.radius - 1] + in[x + box.radius + 1];
        result[static_cast<std::size_t>(x)] = (sum + box.edge * edges) * box.scale;
        sum -= in[x - box.radius];
    }
}

/// Puts a row, moved, between the margins of `line`.
void moveRow(const float *row, int width, Line &line, int margin, const Shift &shift) {
    std::ranges::fill(line, 0.0F);
    const int first = std::max(0, -shift.whole);
    const int last = std::min(width, width - shift.whole);
    float *out = line.data() + margin;
    if (first < last) {
        std::copy(row + first, row + last, out + first + shift.whole);
    }
    if (shift.part != 0) {
        for (int x = width - 1; x >= 0; --x) {
            out[x] = out[x] * (1 - shift.part) + out[x - 1] * shift.part;
        }
    }
}

void blurAlong(CoveragePlane &plane, const Box &box, double distance) {
    const Shift shift(distance);
    const int margin = box.radius + 1;
    Line line(static_cast<std::size_t>(plane.width + 2 * margin));
    Line next(line.size());
    for (int y = 0; y < plane.height; ++y) {
        moveRow(plane.row(y), plane.width, line, margin, shift);
        for (int pass = 0; pass < passes; ++pass) {
            boxAlong(line, next, margin, box);
            line.swap(next);
        }
        std::copy_n(line.data() + margin, plane.width, plane.row(y));
    }
}

/// The rows of a plane with zeros above and below.
class Rows {
public:
    explicit Rows(const CoveragePlane &plane)
        : m_plane(plane)
        , m_zeros(static_cast<std::size_t>(plane.width)) {}

    const float *operator[](int y) const {
        return y >= 0 && y < m_plane.height ? m_plane.row(y) : m_zeros.data();
    }

private:
    const CoveragePlane &m_plane;
    Line m_zeros;
};

/// Works on whole rows at once, which the compiler turns into vector
/// instructions.
void boxDown(const CoveragePlane &plane, CoveragePlane &result, const Box &box) {
    const Rows rows(plane);
    Line sum(static_cast<std::size_t>(plane.width));
    for (int y = 0; y < box.radius; ++y) {
        std::ranges::transform(sum, std::span(rows[y], sum.size()), sum.begin(), std::plus());
    }
    for (int y = 0; y < plane.height; ++y) {
        const float *entering = rows[y + box.radius];
        const float *leaving = rows[y - box.radius];
        const float *above = rows[y - box.radius - 1];
        const float *below = rows[y + box.radius + 1];
        float *out = result.row(y);
        for (std::size_t x = 0; x < sum.size(); ++x) {
            const float inside = sum[x] + entering[x];
            out[x] = (inside + box.edge * (above[x] + below[x])) * box.scale;
            sum[x] = inside - leaving[x];
        }
    }
}

void moveDown(const CoveragePlane &plane, CoveragePlane &result, const Shift &shift) {
    const Rows rows(plane);
    for (int y = 0; y < plane.height; ++y) {
        const float *near = rows[y - shift.whole];
        const float *far = rows[y - shift.whole - 1];
        float *out = result.row(y);
        for (int x = 0; x < plane.width; ++x) {
            out[x] = near[x] * (1 - shift.part) + far[x] * shift.part;
        }
    }
}

void blurDown(CoveragePlane &plane, const Box &box, double distance) {
    CoveragePlane next(plane.width, plane.height);
    moveDown(plane, next, Shift(distance));
    std::swap(plane, next);
    for (int pass = 0; pass < passes; ++pass) {
        boxDown(plane, next, box);
        std::swap(plane, next);
    }
}

} // namespace

int blurSpread(double sigma) { return sigma > 0 ? passes * (boxFor(sigma).radius + 1) : 0; }

CoveragePlane CoveragePlane::blurred(double sigma, QPointF shift) const {
    const Box box = boxFor(sigma);
    CoveragePlane result = *this;
    blurAlong(result, box, shift.x());
    blurDown(result, box, shift.y());
    return result;
}

} // namespace tallyview
