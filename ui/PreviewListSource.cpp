#include "ui/PreviewListSource.h"

#include "ui/ImportConfigurationModel.h"

PreviewListSource PreviewListSourceOf(const ImportConfigurationModel& model)
{
    PreviewListSource source;
    source.cell = [&model](long row, long column) -> const WString* {
        const auto& rows = model.Preview().Rows();
        if (row < 0 || column < 0 || static_cast<std::size_t>(row) >= rows.size())
            return nullptr;
        const FieldList& fields = rows[static_cast<std::size_t>(row)].fields;
        return static_cast<std::size_t>(column) < fields.size() ? &fields[static_cast<std::size_t>(column)] : nullptr;
    };
    source.rowColour = [&model](long row) {
        return row < 0 ? PreviewListSource::kNoColour
                       : model.Preview().RowColour(static_cast<std::size_t>(row)).value_or(PreviewListSource::kNoColour);
    };
    source.cellMarked = [&model](long row, long column) {
        return row >= 0 && column >= 0 &&
               !model.CellConverts(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
    };
    return source;
}
