#include "ui/RulerModel.h"

#include <algorithm>
#include <cmath>
#include <new>

int RulerModel::PositionAt(int x, int y) const
{
    if (cellWidth_ <= 0)
        return -1;
    const int along = (IsVertical() ? y : x) - origin_ + scroll_;
    const double position = std::floor((along - 7.0) / cellWidth_ + 0.5);
    if (position < 0 || position > largest_)
        return -1;
    return static_cast<int>(position);
}

RulerTick RulerModel::TickOf(int position)
{
    if (position % 10 == 0)
        return RulerTick::Long;
    if (position % 5 == 0)
        return RulerTick::Medium;
    return RulerTick::Short;
}

bool RulerModel::MarkerVisible(int pixel, int clientExtent) const
{
    return pixel >= -markerHalfWidth_ && pixel <= clientExtent + markerHalfWidth_;
}

int RulerModel::AddBreak(const RulerBreak& record)
{
    try {
        breaks_.push_back(std::make_unique<RulerBreak>(record));
    } catch (const std::bad_alloc&) {
        return -1;
    }
    return BreakCount() - 1;
}

const RulerBreak* RulerModel::FindBreak(std::int32_t id) const
{
    for (const auto& record : breaks_) {
        if (record->id == id)
            return record.get();
    }
    return nullptr;
}

int RulerModel::RemoveBreak(std::int32_t id)
{
    for (std::size_t slot = 0; slot < breaks_.size(); ++slot) {
        if (breaks_[slot]->id == id) {
            breaks_.erase(breaks_.begin() + static_cast<std::ptrdiff_t>(slot));
            return static_cast<int>(slot);
        }
    }
    return -1;
}

PositionList RulerModel::BreakPositions() const
{
    PositionList positions;
    positions.reserve(breaks_.size());
    for (const auto& record : breaks_) {
        if (record->position >= 0)
            positions.push_back(static_cast<std::uint32_t>(record->position));
    }
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    return positions;
}

void RulerModel::MoveCursor(int delta)
{
    const int from = cursor_ < 0 ? 0 : cursor_ + delta;
    cursor_ = std::clamp(from, 0, std::max(largest_, 0));
}
