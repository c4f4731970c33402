#include "host/ImpexData.h"

#include <algorithm>
#include <limits>

namespace VeltoGis {
namespace ImportExport {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Edges belong to the range; an unbounded axis takes any value, NaN included, and a bounded
// one takes no NaN.
bool InRange(double value, double low, double high)
{
    return (value >= low && value <= high) || (low == -kInfinity && high == kInfinity);
}

} // namespace

// Unbounded: every pair of coordinates passes.
CLq::CLq() : xMin_(-kInfinity), yMin_(-kInfinity), xMax_(kInfinity), yMax_(kInfinity) {}

// The corners may come in either order.
CLq::CLq(double xMin, double yMin, double xMax, double yMax)
    : xMin_(std::min(xMin, xMax)), yMin_(std::min(yMin, yMax)), xMax_(std::max(xMin, xMax)),
      yMax_(std::max(yMin, yMax))
{
}

CLq::~CLq() = default;

int CLq::CheckPoint(double x, double y)
{
    return InRange(x, xMin_, xMax_) && InRange(y, yMin_, yMax_) ? 1 : 0;
}

} // namespace ImportExport
} // namespace VeltoGis
