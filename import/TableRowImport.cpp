#include "import/FieldValues.h"
#include "import/ImportBuilders.h"
#include "import/ImportRun.h"
#include "import/KeyText.h"

#include <boost/make_shared.hpp>
#include <stdexcept>

using namespace VeltoGis::ImportExport;
using VeltoGis::Data::CDataBox;

namespace {

// Builds one row per accepted line: one value per configured column, in list order,
// whatever the column's on/off flag.
class TableRowBuilder : public ImportLineSink {
public:
    TableRowBuilder(ImportRun& run, CDBTable& table) : run_(run), table_(table) {}

    void ImportLine(LineFields& fields) override
    {
        if (AcceptsLine(fields))
            AddRow(fields);
        else
            run_.SkipLine(TxtImport::SkipKeyNotChosen);
    }

protected:
    virtual bool AcceptsLine(LineFields& fields) = 0;

    // Also declares the key field as read.
    void ReadColumnsAndKey(int keyIndex)
    {
        int highest = keyIndex;
        for (const auto& column : run_.Columns()) {
            if (column && column->GetNo() > highest)
                highest = column->GetNo();
            if (column)
                run_.ConvertsColumn(*column);
        }
        run_.ReadColumnsUpTo(highest);
    }

    // The line's key field; an index outside the line's fields throws std::invalid_argument.
    static WString& KeyField(LineFields& fields, int keyIndex)
    {
        if (!fields.Has(keyIndex))
            throw std::invalid_argument("import line without its key field");
        return fields.MutableText(keyIndex);
    }

    ImportRun& run_;

private:
    void AddRow(const LineFields& fields)
    {
        auto row = run_.Values().NewRow(run_.Columns().size());
        for (const auto& column : run_.Columns()) {
            const WString* field = ColumnField(fields, column.get());
            row->Data().push_back(run_.Values().FieldValue(field, column ? column->GetType() : 0));
        }
        table_.AddDBRow(std::move(row));
    }

    CDBTable& table_;
};

class AllRows final : public TableRowBuilder {
public:
    AllRows(ImportRun& run, CDBTable& table) : TableRowBuilder(run, table) { ReadColumnsAndKey(-1); }

private:
    bool AcceptsLine(LineFields&) override { return true; }
};

// Rows whose key field, upper-cased in place (the row stores it so), is in the key set.
class RowsWithKeys final : public TableRowBuilder {
public:
    RowsWithKeys(ImportRun& run, CDBTable& table, const KeySet& keys)
        : TableRowBuilder(run, table), keys_(keys), keyIndex_(table.GetLinkedFieldIndex())
    {
        ReadColumnsAndKey(keyIndex_);
    }

private:
    bool AcceptsLine(LineFields& fields) override
    {
        WString& key = KeyField(fields, keyIndex_);
        UpperCaseInPlace(key);
        return keys_.count(key) != 0;
    }

    const KeySet& keys_;
    int keyIndex_;
};

// Deliberately kept as the host expects it: only lines with an EMPTY key field become rows,
// and only when the empty text, converted by the key column's type, equals the given value.
// The key column is the one at the key index in the column list, not the one with that no.
class RowsWithEmptyKey final : public TableRowBuilder {
public:
    RowsWithEmptyKey(ImportRun& run, CDBTable& table, const CDataBox* keyValue)
        : TableRowBuilder(run, table), keyValue_(keyValue), keyIndex_(table.GetLinkedFieldIndex())
    {
        const auto& columns = run.Columns();
        if (keyIndex_ >= 0 && static_cast<std::size_t>(keyIndex_) < columns.size())
            keyColumn_ = columns[static_cast<std::size_t>(keyIndex_)].get();
        ReadColumnsAndKey(keyIndex_);
    }

private:
    bool AcceptsLine(LineFields& fields) override
    {
        const WString& key = KeyField(fields, keyIndex_);
        if (!key.empty() || !keyValue_ || !keyColumn_)
            return false;
        CDataBox emptyKey;
        SetValueByType(emptyKey, key, keyColumn_->GetType());
        return emptyKey.IsNotNull() && emptyKey == *keyValue_;
    }

    const CDataBox* keyValue_;
    int keyIndex_;
    const CColumnData* keyColumn_ = nullptr;
};

} // namespace

int ImportBuilders::ImportTableRows(const WString& configuration, CDBTable& table, int maxLines)
{
    return RunBuilder<AllRows>(configuration, MessageId::TableRowProgress, maxLines, table);
}

int ImportBuilders::ImportLinkedTableRows(const WString& configuration, CDBTable& table, const KeySet& keys)
{
    return RunBuilder<RowsWithKeys>(configuration, MessageId::TableRowProgress, 0, table, keys);
}

int ImportBuilders::UpdateLinkedTableRows(const WString& configuration, CDBTable& table, const CDataBox* keyValue)
{
    return RunBuilder<RowsWithEmptyKey>(configuration, MessageId::TableRowProgress, 0, table, keyValue);
}
