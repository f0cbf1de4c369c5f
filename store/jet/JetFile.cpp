#include "store/jet/JetFile.h"

#include <cstring>
#include <set>

#include "store/jet/JetText.h"

namespace koben::oldfile {

namespace {

// Flags of a row's place on its page.
constexpr int Elsewhere = 0x4000;  // four bytes that say where the row has moved to
constexpr int Unlisted =
    0x8000;  // a row that has moved here, to be read through its old place; with both it is deleted
constexpr int Flags = Elsewhere | Unlisted;
constexpr int Offset = 0x1FFF;

constexpr uint32_t CataloguePage = 2, FirstPages = 0xFFFFFF;
constexpr int32_t TableObject = 1;
constexpr uint32_t SystemObject = 0x80000002;
constexpr int MostRowsOnPage = 1000, MostHops = 8;

Type typeOf(const MdbColumn& column) {
    switch (column.col_type) {
        case MDB_BOOL:
            return Type::Bool;
        case MDB_BYTE:
            return Type::Byte;
        case MDB_INT:
            return Type::Short;
        case MDB_LONGINT:
            return Type::Long;
        case MDB_MONEY:
            return Type::Money;
        case MDB_FLOAT:
            return Type::Single;
        case MDB_DOUBLE:
            return Type::Double;
        case MDB_DATETIME:
            return Type::Date;
        case MDB_TEXT:
            return Type::Text;
        case MDB_MEMO:
            return Type::Memo;
        default:
            return Type::Other;
    }
}

template <class Number>
Number numberIn(const Cell& cell) {
    Number number = 0;
    if (cell.state == State::Value && cell.bytes.size() == sizeof(number))
        std::memcpy(&number, cell.bytes.data(), sizeof(number));
    return number;
}

}  // namespace

/// A table's definition as the library holds it, and where its rows go.
struct JetFile::Definition {
    MdbCatalogEntry entry{};
    MdbTableDef* table = nullptr;
    std::vector<MdbField> fields;
    std::vector<Cell> cells;
    const std::function<void(const std::vector<Cell>&)>* sink = nullptr;
    uint32_t damaged = 0;

    ~Definition() { mdb_free_tabledef(table); }
    const MdbColumn& column(size_t i) const { return *static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i)); }
    size_t count() const { return table->columns == nullptr ? 0 : table->columns->len; }
};

JetFile::JetFile(const char* path) : m_mdb(mdb_open(path, MDB_NOFLAGS)) {
    constexpr std::string_view sign("\0\1\0\0Standard Jet DB", 19);
    const auto isOld = [&] { return std::memcmp(m_mdb->pg_buf, sign.data(), sign.size()) == 0; };
    if (m_mdb == nullptr || (m_mdb->f->jet_version <= MDB_VER_JET4 && isOld())) return;
    mdb_close(m_mdb);
    m_mdb = nullptr;
}

JetFile::~JetFile() { mdb_close(m_mdb); }

std::unique_ptr<JetFile::Definition> JetFile::define(uint32_t page) const {
    auto result = std::make_unique<Definition>();
    result->entry.mdb = m_mdb;
    result->entry.object_type = MDB_TABLE;
    result->entry.table_pg = page;
    result->table = mdb_read_table(&result->entry);
    if (result->table == nullptr || result->table->num_cols == 0 || result->table->num_cols > MostColumns ||
        mdb_read_columns(result->table) == nullptr || result->count() != result->table->num_cols)
        return nullptr;
    result->fields.resize(result->count());
    result->cells.resize(result->count());
    return result;
}

bool JetFile::readTables(std::vector<Table>& tables) {
    Table catalogue;
    catalogue.page = CataloguePage;
    const auto definition = define(CataloguePage);
    if (definition == nullptr) return false;
    size_t at[4] = {MostColumns, MostColumns, MostColumns, MostColumns};
    const char* const names[] = {"id", "name", "type", "flags"};
    for (size_t i = 0; i < definition->count(); ++i)
        for (size_t n = 0; n < 4; ++n)
            if (folded(definition->column(i).name) == names[n]) at[n] = i;
    for (const size_t column : at)
        if (column == MostColumns) return false;
    std::set<std::string> known;
    uint32_t objects = 0;
    const uint32_t lost = readRows(catalogue, [&](const std::vector<Cell>& row) {
        ++objects;
        if ((numberIn<int16_t>(row[at[2]]) & 0x7F) != TableObject) return;
        if ((static_cast<uint32_t>(numberIn<int32_t>(row[at[3]])) & SystemObject) != 0) return;
        if (!known.insert(folded(row[at[1]].bytes)).second) return;
        Table& table = tables.emplace_back();
        table.name = row[at[1]].bytes;
        table.page = static_cast<uint32_t>(numberIn<int32_t>(row[at[0]])) & FirstPages;
    });
    if (lost > 0 || objects < definition->table->num_rows) return false;  // a table may be missing
    for (Table& table : tables) {
        const auto its = define(table.page);
        table.readable = its != nullptr;
        if (!table.readable) continue;
        table.rows = its->table->num_rows;
        mdb_read_pg(m_mdb, table.page);
        table.counter = static_cast<int32_t>(mdb_get_int32(m_mdb->pg_buf, m_mdb->fmt->tab_num_rows_offset + 4));
        for (size_t i = 0; i < its->count(); ++i) {
            const MdbColumn& column = its->column(i);
            const int characters = jet4() ? column.col_size / 2 : column.col_size;
            table.columns.push_back(
                {column.name, typeOf(column), static_cast<uint16_t>(characters), column.is_long_auto != 0});
        }
    }
    return true;
}

uint32_t JetFile::readRows(const Table& table, const std::function<void(const std::vector<Cell>&)>& sink) {
    const auto definition = define(table.page);
    if (definition == nullptr) return 0;
    definition->sink = &sink;
    mdb_rewind_table(definition->table);
    std::set<uint32_t> seen;  // the library may give a page twice where the map of pages is damaged
    while (mdb_read_next_dpg(definition->table))
        if (seen.insert(m_mdb->cur_pg).second) readPage(*definition);
    return definition->damaged;
}

void JetFile::readPage(Definition& definition) {
    const int rows = mdb_get_int16(m_mdb->pg_buf, m_mdb->fmt->row_count_offset);
    for (int number = 0; number < rows && number <= MostRowsOnPage; ++number) readRow(definition, number);
}

void JetFile::readRow(Definition& definition, int number) {
    int start = 0;
    size_t size = 0;
    const bool found = mdb_find_row(m_mdb, number, &start, &size) == 0;
    if ((start & Unlisted) != 0) return;
    const bool moved = (start & Flags) == Elsewhere;
    start &= Offset;
    const bool read = found && (moved ? followRow(definition, start, size) : crackRow(definition, start, size));
    if (!read) ++definition.damaged;
}

/// The row lies on another page now. The present page stands again afterwards.
bool JetFile::followRow(Definition& definition, int start, size_t size) {
    unsigned char present[MDB_PGSIZE];
    std::memcpy(present, m_mdb->pg_buf, sizeof(present));
    const auto page = static_cast<size_t>(m_mdb->fmt->pg_size);
    bool read = false;
    for (int hops = 0; hops < MostHops && size >= 4; ++hops) {
        const auto place = static_cast<uint32_t>(mdb_get_int32(m_mdb->pg_buf, start));
        if (static_cast<size_t>(mdb_read_alt_pg(m_mdb, place >> 8)) != page) break;
        mdb_swap_pgbuf(m_mdb);
        if (m_mdb->pg_buf[0] != MDB_PAGE_DATA ||
            static_cast<unsigned long>(mdb_get_int32(m_mdb->pg_buf, 4)) != definition.entry.table_pg ||
            mdb_find_row(m_mdb, static_cast<int>(place & 0xFF), &start, &size) != 0)
            break;
        const int flags = start & Flags;
        start &= Offset;
        if (flags == Elsewhere) continue;
        read = flags != Flags && crackRow(definition, start, size);
        break;
    }
    std::memcpy(m_mdb->pg_buf, present, sizeof(present));
    return read;
}

bool JetFile::crackRow(Definition& definition, int start, size_t size) {
    if (size == 0) return false;
    const int columns = mdb_crack_row(definition.table, start, size, definition.fields.data());
    if (columns < 0) return false;
    for (size_t i = 0; i < definition.count(); ++i) {
        const MdbColumn& column = definition.column(i);
        // a column that was added after the row was written is in none of the row's tables
        definition.cells[i] = column.col_num < columns ? cell(column, definition.fields[i]) : Cell();
    }
    (*definition.sink)(definition.cells);
    return true;
}

Cell JetFile::cell(const MdbColumn& column, const MdbField& field) const {
    const Type type = typeOf(column);
    if (type == Type::Bool) return {State::Value, std::string(1, field.is_null ? '\0' : '\1')};
    if (field.is_null || type == Type::Other) return {};
    const uint32_t width = widthOf(type);
    const auto page = static_cast<uint32_t>(m_mdb->fmt->pg_size);
    const auto from = static_cast<uint32_t>(field.start);
    const auto length = width > 0 ? width : static_cast<uint32_t>(field.siz);
    if (field.start < 0 || field.siz < 0 || from > page || length > page - from) return {State::Damaged, {}};
    const std::string_view bytes(reinterpret_cast<const char*>(m_mdb->pg_buf) + from, length);
    if (type == Type::Memo) return memo(field);
    if (type == Type::Text) return {State::Value, text(bytes)};
    return {State::Value, std::string(bytes)};
}

std::string JetFile::text(std::string_view bytes) const { return jet4() ? fromUcs2(bytes) : fromCodePage(bytes); }

/// A long text: twelve bytes that tell where it lies, in the row itself, on one other page, or on a chain of them.
Cell JetFile::memo(const MdbField& field) const {
    constexpr uint32_t inRow = 0x80000000, onOnePage = 0x40000000, length = 0x3FFFFFFF;
    if (field.siz < MDB_MEMO_OVERHEAD) return {State::Value, {}};
    const char* page = reinterpret_cast<const char*>(m_mdb->pg_buf);
    const auto head = static_cast<uint32_t>(mdb_get_int32(m_mdb->pg_buf, field.start));
    const auto place = static_cast<uint32_t>(mdb_get_int32(m_mdb->pg_buf, field.start + 4));
    if ((head & inRow) != 0)
        return {State::Value,
                text({page + field.start + MDB_MEMO_OVERHEAD, static_cast<size_t>(field.siz - MDB_MEMO_OVERHEAD)})};
    const uint32_t wanted = head & length;
    if (wanted > MostMemo) return {State::Damaged, {}};
    std::string bytes;
    if ((head & onOnePage) == 0) {
        if (!chain(place, wanted, bytes)) return {State::Damaged, {}};
        return {State::Value, text(bytes)};
    }
    void* buffer = nullptr;
    int start = 0;
    size_t size = 0;
    if (mdb_find_pg_row(m_mdb, static_cast<int>(place), &buffer, &start, &size) != 0 || size < wanted)
        return {State::Damaged, {}};
    start &= Offset;
    return {State::Value, text({static_cast<const char*>(buffer) + start, wanted})};
}

bool JetFile::chain(uint32_t place, uint32_t length, std::string& bytes) const {
    while (bytes.size() < length) {
        void* buffer = nullptr;
        int start = 0;
        size_t size = 0;
        if (place == 0 || mdb_find_pg_row(m_mdb, static_cast<int>(place), &buffer, &start, &size) != 0 || size <= 4)
            return false;
        start &= Offset;
        place = static_cast<uint32_t>(mdb_get_int32(buffer, start));
        bytes.append(static_cast<const char*>(buffer) + start + 4, size - 4);
    }
    bytes.resize(length);
    return true;
}

}  // namespace koben::oldfile
