#pragma once
// A database file of the old engine (Jet 3 and 4) through libmdb. Damaged files may make the library read anywhere or
// never come back: this is part of koben-altdaten alone, a process of its own with limits. Plain C++, no Qt.
#include <glib.h>
#include <mdbtools.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/OldFileFormat.h"

namespace koben::oldfile {

struct Column {
    std::string name;  ///< UTF-8, as all texts here
    Type type = Type::Other;
    uint16_t size = 0;  ///< characters of a Text
    bool counter = false;
};

struct Table {
    std::string name;
    uint32_t page = 0;     ///< of its definition
    uint32_t rows = 0;     ///< by its own count
    int32_t counter = 0;   ///< the last number that its counter gave
    bool readable = true;  ///< otherwise it has no columns
    std::vector<Column> columns;
};

struct Cell {
    State state = State::Null;
    std::string bytes;  ///< of a value: the number as it lies in memory, or the text
};

class JetFile {
public:
    explicit JetFile(const char* path);
    ~JetFile();
    JetFile(const JetFile&) = delete;
    JetFile& operator=(const JetFile&) = delete;

    /// Nothing else may be called where this is false.
    bool isOpen() const { return m_mdb != nullptr; }
    /// The user's own tables in the order of the catalogue; false where that cannot be read.
    bool readTables(std::vector<Table>& tables);
    /// Hands each living row to `sink`, in the order in which they were put in as long as none was deleted. The number
    /// of rows that could not be read.
    uint32_t readRows(const Table& table, const std::function<void(const std::vector<Cell>&)>& sink);

private:
    struct Definition;
    std::unique_ptr<Definition> define(uint32_t page) const;
    void readPage(Definition& definition);
    void readRow(Definition& definition, int number);
    bool followRow(Definition& definition, int start, size_t size);
    bool crackRow(Definition& definition, int start, size_t size);
    Cell cell(const MdbColumn& column, const MdbField& field) const;
    Cell memo(const MdbField& field) const;
    bool chain(uint32_t place, uint32_t length, std::string& bytes) const;
    std::string text(std::string_view bytes) const;
    bool jet4() const { return m_mdb->f->jet_version != MDB_VER_JET3; }

    MdbHandle* m_mdb;
};

}  // namespace koben::oldfile
