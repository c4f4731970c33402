#include "tessel/gis/SpatialIndexes.h"

#include "tessel/core/AppError.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

namespace tessel {
namespace {

// SQLite's R-tree node: a 2-byte depth (the root's only), a 2-byte cell count, then cells of
// an 8-byte id and the box as four 4-byte floats (min x, max x, min y, max y), all big-endian.
constexpr std::size_t kNodeHeader = 4;
constexpr std::size_t kCellBytes = 8 + 4 * 4;

struct Box {
    float minX, maxX, minY, maxY;
};

struct Cell {
    std::int64_t id; // a feature id in a leaf, a node number above
    Box box;
};

// The float boxes SQLite keeps hold the double point: rounded outwards.
float Down(double value)
{
    const auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded) > value ? std::nextafter(rounded, -INFINITY) : rounded;
}

float Up(double value)
{
    const auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded) < value ? std::nextafter(rounded, INFINITY) : rounded;
}

Box Enclosing(const Cell* first, const Cell* last)
{
    Box box = first->box;
    for (const Cell* cell = first + 1; cell != last; ++cell) {
        box.minX = std::min(box.minX, cell->box.minX);
        box.maxX = std::max(box.maxX, cell->box.maxX);
        box.minY = std::min(box.minY, cell->box.minY);
        box.maxY = std::max(box.maxY, cell->box.maxY);
    }
    return box;
}

void PutBigEndian(unsigned char* at, std::uint64_t value, int bytes)
{
    for (int i = bytes - 1; i >= 0; --i, value >>= 8)
        at[i] = static_cast<unsigned char>(value & 0xFF);
}

std::string Quoted(const std::string& name)
{
    std::string quoted = "\"";
    for (const char c : name)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

// Sort-tile-recursive order: vertical slices by x, each sorted by y, so that consecutive
// runs of cells make compact nodes.
void SortIntoTiles(std::vector<Cell>& cells, std::size_t perNode)
{
    const auto centreX = [](const Cell& cell) { return double(cell.box.minX) + cell.box.maxX; };
    const auto centreY = [](const Cell& cell) { return double(cell.box.minY) + cell.box.maxY; };
    std::sort(cells.begin(), cells.end(), [&](const Cell& a, const Cell& b) { return centreX(a) < centreX(b); });
    const std::size_t nodes = (cells.size() + perNode - 1) / perNode;
    const auto slices = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(nodes))));
    const std::size_t perSlice = ((nodes + slices - 1) / slices) * perNode;
    for (std::size_t begin = 0; begin < cells.size(); begin += perSlice) {
        const auto end = cells.begin() + static_cast<std::ptrdiff_t>(std::min(cells.size(), begin + perSlice));
        std::sort(cells.begin() + static_cast<std::ptrdiff_t>(begin), end,
                  [&](const Cell& a, const Cell& b) { return centreY(a) < centreY(b); });
    }
}

class Database {
public:
    explicit Database(const std::string& path) : path_(path)
    {
        if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
            Fail();
    }
    ~Database() { sqlite3_close(db_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Execute(const std::string& sql)
    {
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            Fail();
    }

    using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
    Statement Prepare(const std::string& sql)
    {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            Fail();
        return Statement(statement, sqlite3_finalize);
    }

    // Runs a statement to its end with the values bound, ready for the next ones.
    void Step(sqlite3_stmt* statement)
    {
        if (sqlite3_step(statement) != SQLITE_DONE)
            Fail();
        sqlite3_reset(statement);
    }

    [[noreturn]] void Fail()
    {
        throw JobError("cannot write the spatial index of '" + path_ +
                       "': " + (db_ ? sqlite3_errmsg(db_) : "SQLite cannot open it"));
    }

private:
    std::string path_;
    sqlite3* db_ = nullptr;
};

class TreeWriter {
public:
    TreeWriter(Database& db, const std::string& rtree, std::size_t nodeBytes)
        : db_(db), nodeBytes_(nodeBytes),
          node_(db.Prepare("INSERT OR REPLACE INTO " + Quoted(rtree + "_node") + " VALUES (?, ?)")),
          rowid_(db.Prepare("INSERT INTO " + Quoted(rtree + "_rowid") + " VALUES (?, ?)")),
          parent_(db.Prepare("INSERT INTO " + Quoted(rtree + "_parent") + " VALUES (?, ?)"))
    {}

    std::size_t CellsPerNode() const { return (nodeBytes_ - kNodeHeader) / kCellBytes; }

    // Writes the levels from the leaves up and the root as node 1.
    void Write(std::vector<Cell> cells)
    {
        const std::size_t perNode = CellsPerNode();
        SortIntoTiles(cells, perNode);
        std::int64_t nextNode = 2;
        int depth = 0;
        while (cells.size() > perNode) {
            std::vector<Cell> parents;
            for (std::size_t begin = 0; begin < cells.size(); begin += perNode) {
                const Cell* first = cells.data() + begin;
                const Cell* last = cells.data() + std::min(cells.size(), begin + perNode);
                const Cell parent{nextNode++, Enclosing(first, last)};
                WriteNode(parent.id, first, last, depth, 0);
                parents.push_back(parent);
            }
            cells = std::move(parents);
            ++depth;
        }
        WriteNode(1, cells.data(), cells.data() + cells.size(), depth, depth);
        // Each feature's leaf, in feature id order: appending to the table's b-tree is
        // cheap where inserting at random places is not (ten million points).
        std::sort(leafOf_.begin(), leafOf_.end());
        for (const auto& [fid, node] : leafOf_) {
            sqlite3_bind_int64(rowid_.get(), 1, fid);
            sqlite3_bind_int64(rowid_.get(), 2, node);
            db_.Step(rowid_.get());
        }
    }

private:
    // A node at depth levels above the leaves; its cells point to its children, which learn
    // their parent, or in a leaf to features, whose node is noted to be written at the end.
    void WriteNode(std::int64_t number, const Cell* first, const Cell* last, int level, int depthField)
    {
        std::vector<unsigned char> data(nodeBytes_, 0);
        PutBigEndian(data.data(), static_cast<std::uint64_t>(depthField), 2);
        PutBigEndian(data.data() + 2, static_cast<std::uint64_t>(last - first), 2);
        unsigned char* at = data.data() + kNodeHeader;
        for (const Cell* cell = first; cell != last; ++cell, at += kCellBytes) {
            PutBigEndian(at, static_cast<std::uint64_t>(cell->id), 8);
            const float coordinates[] = {cell->box.minX, cell->box.maxX, cell->box.minY, cell->box.maxY};
            for (int i = 0; i < 4; ++i) {
                std::uint32_t bits;
                std::memcpy(&bits, &coordinates[i], sizeof bits);
                PutBigEndian(at + 8 + 4 * i, bits, 4);
            }
            if (level == 0) {
                leafOf_.emplace_back(cell->id, number);
                continue;
            }
            sqlite3_bind_int64(parent_.get(), 1, cell->id);
            sqlite3_bind_int64(parent_.get(), 2, number);
            db_.Step(parent_.get());
        }
        sqlite3_bind_int64(node_.get(), 1, number);
        sqlite3_bind_blob(node_.get(), 2, data.data(), static_cast<int>(data.size()), SQLITE_TRANSIENT);
        db_.Step(node_.get());
    }

    Database& db_;
    std::size_t nodeBytes_;
    Database::Statement node_, rowid_, parent_;
    std::vector<std::pair<std::int64_t, std::int64_t>> leafOf_; // feature id, its leaf node
};

// The triggers that keep the index right when the table is edited later, as the R-tree
// extension defines them.
std::string Triggers(const std::string& rtree, const std::string& table, const std::string& geometry,
                     const std::string& fid)
{
    const std::string t = Quoted(table), r = Quoted(rtree);
    const std::string newG = "NEW." + Quoted(geometry), oldId = "OLD." + Quoted(fid), newId = "NEW." + Quoted(fid);
    const std::string insert = "INSERT OR REPLACE INTO " + r + " VALUES (" + newId + ",ST_MinX(" + newG +
                               "), ST_MaxX(" + newG + "),ST_MinY(" + newG + "), ST_MaxY(" + newG + "));";
    const std::string present = "(" + newG + " NOTNULL AND NOT ST_IsEmpty(" + newG + "))";
    const std::string absent = "(" + newG + " ISNULL OR ST_IsEmpty(" + newG + "))";
    const auto trigger = [&](const std::string& name, const std::string& when, const std::string& body) {
        return "CREATE TRIGGER " + Quoted(rtree + "_" + name) + " " + when + " BEGIN " + body + " END;";
    };
    return trigger("insert",
                   "AFTER INSERT ON " + t + " WHEN (new." + Quoted(geometry) + " NOT NULL AND NOT ST_IsEmpty(" + newG +
                       "))",
                   insert) +
           trigger("update1",
                   "AFTER UPDATE OF " + Quoted(geometry) + " ON " + t + " WHEN " + oldId + " = " + newId + " AND " +
                       present,
                   insert) +
           trigger("update2",
                   "AFTER UPDATE OF " + Quoted(geometry) + " ON " + t + " WHEN " + oldId + " = " + newId + " AND " +
                       absent,
                   "DELETE FROM " + r + " WHERE id = " + oldId + ";") +
           trigger("update3", "AFTER UPDATE ON " + t + " WHEN " + oldId + " != " + newId + " AND " + present,
                   "DELETE FROM " + r + " WHERE id = " + oldId + "; " + insert) +
           trigger("update4", "AFTER UPDATE ON " + t + " WHEN " + oldId + " != " + newId + " AND " + absent,
                   "DELETE FROM " + r + " WHERE id IN (" + oldId + ", " + newId + ");") +
           trigger("delete", "AFTER DELETE ON " + t + " WHEN old." + Quoted(geometry) + " NOT NULL",
                   "DELETE FROM " + r + " WHERE id = " + oldId + ";");
}

} // namespace

void AddGpkgSpatialIndex(const std::string& path, const std::string& table, const std::string& geometryColumn,
                         const std::string& fidColumn, std::vector<IndexedPoint> points)
{
    Database db(path);
    // The file is still the temporary one that becomes the target only when complete.
    db.Execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN");
    const std::string rtree = "rtree_" + table + "_" + geometryColumn;
    db.Execute("CREATE VIRTUAL TABLE " + Quoted(rtree) + " USING rtree(id, minx, maxx, miny, maxy)");
    std::size_t nodeBytes = 0;
    {
        auto size = db.Prepare("SELECT length(data) FROM " + Quoted(rtree + "_node") + " WHERE nodeno = 1");
        if (sqlite3_step(size.get()) != SQLITE_ROW)
            db.Fail();
        nodeBytes = static_cast<std::size_t>(sqlite3_column_int64(size.get(), 0));
    }
    TreeWriter writer(db, rtree, nodeBytes);
    if (writer.CellsPerNode() < 2)
        db.Fail();
    if (!points.empty()) {
        std::vector<Cell> cells;
        cells.reserve(points.size());
        for (const IndexedPoint& point : points)
            cells.push_back({point.fid, {Down(point.x), Up(point.x), Down(point.y), Up(point.y)}});
        points = {};
        writer.Write(std::move(cells));
    }
    db.Execute(Triggers(rtree, table, geometryColumn, fidColumn));
    // A GeoPackage that uses no extension yet has no table to list them.
    db.Execute("CREATE TABLE IF NOT EXISTS gpkg_extensions (table_name TEXT,column_name TEXT,extension_name TEXT NOT "
               "NULL,definition TEXT NOT NULL,scope TEXT NOT NULL,CONSTRAINT ge_tce UNIQUE (table_name, column_name, "
               "extension_name))");
    auto extension = db.Prepare("INSERT INTO gpkg_extensions (table_name, column_name, extension_name, definition, "
                                "scope) VALUES (?, ?, 'gpkg_rtree_index', "
                                "'http://www.geopackage.org/spec120/#extension_rtree', 'write-only')");
    sqlite3_bind_text(extension.get(), 1, table.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(extension.get(), 2, geometryColumn.c_str(), -1, SQLITE_TRANSIENT);
    db.Step(extension.get());
    db.Execute("COMMIT");
}

} // namespace tessel
