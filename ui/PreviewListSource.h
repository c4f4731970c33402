#pragma once
// What a preview list shows, read from the wizard's model as it stands: the text of a cell, a
// row's background and whether a cell is marked as not converting to its column's type.
// Both toolkits' preview lists draw from it, so that what they show is decided once.

#include "host/Text.h"

#include <cstddef>
#include <cstdint>
#include <functional>

class ImportConfigurationModel;

struct PreviewListSource {
    // A row without a colour of its own.
    static constexpr std::uint32_t kNoColour = 0xFFFFFFFF;
    // Cells shown at most this many characters long; longer ones end in an ellipsis.
    static constexpr std::size_t kShownCellLength = 200;

    std::function<const WString*(long row, long column)> cell; // null: an empty cell
    std::function<std::uint32_t(long row)> rowColour;          // 0x00BBGGRR, or kNoColour
    std::function<bool(long row, long column)> cellMarked;
};

// The source of the model's preview; the model must outlive it.
PreviewListSource PreviewListSourceOf(const ImportConfigurationModel& model);
