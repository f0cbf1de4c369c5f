// koben-altdaten FILE [TABLE ...]: hands over what a database file of the old engine holds (store/OldFileFormat.h), of
// the tables named, in this order, or of all. KOBEN runs it, since a damaged file may bring down whoever reads it.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#ifdef __linux__
#include <sys/prctl.h>

#include <csignal>
#endif

#include "store/jet/JetFile.h"
#include "store/jet/JetText.h"

using namespace koben::oldfile;

namespace {

constexpr rlim_t Memory = 512 << 20, Seconds = 600, Files = 16;

// A sanitizer reserves more memory than any limit.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool Sanitized = true;
#elif defined(__has_feature)
constexpr bool Sanitized = __has_feature(address_sanitizer);
#else
constexpr bool Sanitized = false;
#endif

void limit(int what, rlim_t most) {
    rlimit now{};
    if (getrlimit(static_cast<__rlimit_resource>(what), &now) != 0) return;
    now.rlim_cur = now.rlim_max = now.rlim_max == RLIM_INFINITY ? most : std::min(most, now.rlim_max);
    setrlimit(static_cast<__rlimit_resource>(what), &now);
}

/// Nothing is written but the output, and whoever waits for it is not outlived.
void confine() {
    close_range(STDERR_FILENO + 1, ~0U, 0);  // what the caller had open counts against the limit
    if (!Sanitized) limit(RLIMIT_AS, Memory);
    limit(RLIMIT_CPU, Seconds);
    limit(RLIMIT_NOFILE, Files);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CORE, 0);
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    // the library asks the environment for files and code pages
    unsetenv("MDBPATH");
    setenv("MDBICONV", "UTF-8", 1);
    setenv("MDB_ICONV", "UTF-8", 1);
    setenv("MDB_JET3_CHARSET", "CP1252", 1);
}

/// Standard output for the messages alone: what the library prints goes nowhere.
FILE* takeOutput() {
    const int output = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    FILE* file = fdopen(output, "w");
    if (file == nullptr) _exit(2);
    return file;
}

class Writer {
public:
    explicit Writer(FILE* file) : m_file(file) { std::setvbuf(file, nullptr, _IOFBF, 1 << 18); }

    template <class Number>
    Writer& number(Number value) {
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof(value));
        return *this;
    }
    Writer& name(const std::string& text) {
        number(static_cast<uint8_t>(std::min<size_t>(text.size(), 255)));
        m_bytes.append(text, 0, 255);
        return *this;
    }
    void cell(const Cell& cell, Type type) {
        m_bytes += static_cast<char>(cell.state);
        if (cell.state != State::Value) return;
        if (widthOf(type) == 0) number(static_cast<uint32_t>(cell.bytes.size()));
        m_bytes += cell.bytes;
    }
    void send(Message message) {
        const auto length = static_cast<uint32_t>(m_bytes.size());
        std::fputc(static_cast<char>(message), m_file);
        std::fwrite(&length, sizeof(length), 1, m_file);
        std::fwrite(m_bytes.data(), 1, m_bytes.size(), m_file);
        m_bytes.clear();
    }
    void head() { std::fwrite(Head, 1, sizeof(Head) - 1, m_file); }
    bool finish() { return std::fflush(m_file) == 0 && std::ferror(m_file) == 0; }

private:
    FILE* m_file;
    std::string m_bytes;
};

/// The tables named, in that order; all where none is named.
std::vector<Table> wanted(const std::vector<Table>& tables, int count, char** names) {
    if (count == 0) return tables;
    std::vector<Table> result;
    for (int i = 0; i < count; ++i)
        for (const Table& table : tables)
            if (folded(table.name) == folded(names[i])) result.push_back(table);
    return result;
}

void describe(Writer& writer, const Table& table) {
    writer.number(table.rows).number(table.counter).number(static_cast<uint8_t>(table.readable)).name(table.name);
    writer.number(static_cast<uint16_t>(table.columns.size()));
    for (const Column& column : table.columns)
        writer.number(static_cast<uint8_t>(column.type))
            .number(column.size)
            .number(static_cast<uint8_t>(column.counter))
            .name(column.name);
    writer.send(Message::Table);
}

void handOver(Writer& writer, JetFile& file, const Table& table) {
    writer.send(Message::Rows);
    uint32_t rows = 0;
    const uint32_t damaged = !table.readable ? 0 : file.readRows(table, [&](const std::vector<Cell>& cells) {
        for (size_t i = 0; i < cells.size(); ++i) writer.cell(cells[i], table.columns[i].type);
        writer.send(Message::Row);
        ++rows;
    });
    writer.number(rows).number(damaged);
    writer.send(Message::End);
}

void fail(Writer& writer, Failure failure) {
    writer.number(static_cast<char>(failure));
    writer.send(Message::Failure);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "koben-altdaten liest Datenbanken im alten Format und wird von KOBEN aufgerufen.\n");
        return 2;
    }
    confine();
    Writer writer(takeOutput());
    writer.head();
    JetFile file(argv[1]);
    std::vector<Table> tables;
    if (!file.isOpen()) {
        fail(writer, access(argv[1], R_OK) == 0 ? Failure::NotOld : Failure::Unreadable);
    } else if (!file.readTables(tables)) {
        fail(writer, Failure::NoCatalogue);
    } else {
        tables = wanted(tables, argc - 2, argv + 2);
        for (const Table& table : tables) describe(writer, table);
        for (const Table& table : tables) handOver(writer, file, table);
        writer.send(Message::Done);
    }
    _exit(writer.finish() ? 0 : 1);  // what the library still holds is nobody's concern
}
