#include "store/OldFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUtf8StringView>
#include <cmath>
#include <cstring>
#include <optional>

#include "store/ChildProcess.h"
#include "store/DatabaseError.h"
#include "store/FileCheck.h"
#include "store/OldFileFormat.h"

namespace koben {

namespace {

using oldfile::Message;
using Cell = oldfile::Type;

constexpr int Patience = 30'000, AskAfter = 100;  // milliseconds without a byte
constexpr qint64 Slack = 4 << 20, Swell = 16;     // what may come of a file: so much, and so often its size

#ifdef KOBEN_READS_OLD_FILES
constexpr bool readsOldFiles = true;
#else
constexpr bool readsOldFiles = false;
#endif

struct Helper {
    QString program;
    int patience = 0;
};
Helper& helper() {
    static Helper instance;
    return instance;
}

/// Beside the running program, whichever it is, or where an installed program keeps what only it calls.
QString helperProgram() {
    if (!helper().program.isEmpty()) return helper().program;
    const QFileInfo self(QStringLiteral("/proc/self/exe"));
    const QString folder =
        self.exists() ? QFileInfo(self.canonicalFilePath()).path() : QCoreApplication::applicationDirPath();
    const QString installed = folder + QStringLiteral("/../libexec/koben/koben-altdaten");
    return QFileInfo::exists(installed) ? installed : folder + QStringLiteral("/koben-altdaten");
}

/// Takes numbers and texts off the front of a message.
class Content {
public:
    explicit Content(QByteArrayView bytes) : m_bytes(bytes) {}

    template <class Number>
    Number number() {
        Number value{};
        const QByteArrayView bytes = take(sizeof(value));
        if (!bytes.isEmpty()) std::memcpy(&value, bytes.data(), sizeof(value));
        return value;
    }
    QByteArrayView take(qsizetype count) {
        if (count < 0 || count > m_bytes.size() - m_at) {
            m_ok = false;
            return {};
        }
        m_at += count;
        return m_bytes.sliced(m_at - count, count);
    }
    QString name() {
        const QByteArrayView bytes = take(number<quint8>());
        m_ok = m_ok && !bytes.isEmpty() && QUtf8StringView(bytes).isValidUtf8();
        return QString::fromUtf8(bytes);
    }
    qsizetype at() const { return m_at; }
    bool ok() const { return m_ok; }
    bool atEnd() const { return m_ok && m_at == m_bytes.size(); }

private:
    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    bool m_ok = true;
};

Type typeOf(Cell cell) {
    switch (cell) {
        case Cell::Bool:
            return Type::Bool;
        case Cell::Byte:
        case Cell::Short:
            return Type::Short;
        case Cell::Long:
            return Type::Long;
        case Cell::Money:
            return Type::Currency;
        case Cell::Single:
            return Type::Single;
        case Cell::Double:
            return Type::Double;
        case Cell::Date:
            return Type::Date;
        case Cell::Text:
        case Cell::Memo:
            return Type::Text;
        case Cell::Other:
            break;
    }
    return Type::Null;
}

/// A day of the years 100 to 9999. Before 30.12.1899 the whole part counts back and the fraction forward all the same.
/// A time that rounds to midnight is the next day's.
std::optional<Value> dateOf(double serial, OldLosses& losses) {
    constexpr double first = -657434, last = 2958465, secondsOfDay = 86400;
    const qint64 zero = QDate(1899, 12, 30).toJulianDay();
    if (!(serial > first - 1 && serial < last + 1)) return std::nullopt;
    auto day = static_cast<qint64>(serial);
    auto second = static_cast<qint64>(std::abs(serial - static_cast<double>(day)) * secondsOfDay + 0.5);
    if (second >= static_cast<qint64>(secondsOfDay)) ++day, second = 0;
    if (day > static_cast<qint64>(last)) return std::nullopt;
    losses.cutTimes += second > 0;
    return Value(QDate::fromJulianDay(zero + day));
}

template <class Number>
Number numberAt(QByteArrayView bytes) {
    Number value{};
    std::memcpy(&value, bytes.data(), sizeof(value));
    return value;
}

std::optional<Value> valueOf(Cell type, QByteArrayView bytes, OldLosses& losses) {
    switch (type) {
        case Cell::Bool:
            return Value(bytes[0] != 0);
        case Cell::Byte:
            return Value(static_cast<int>(static_cast<quint8>(bytes[0])));
        case Cell::Short:
            return Value(static_cast<int>(numberAt<qint16>(bytes)));
        case Cell::Long:
            return Value(numberAt<qint32>(bytes));
        case Cell::Money:
            return Value(Money{numberAt<qint64>(bytes)});
        case Cell::Single: {
            const auto number = numberAt<float>(bytes);
            return std::isfinite(number) ? std::optional(Value(number)) : std::nullopt;
        }
        case Cell::Double: {
            const auto number = numberAt<double>(bytes);
            return std::isfinite(number) ? std::optional(Value(number)) : std::nullopt;
        }
        case Cell::Date:
            return dateOf(numberAt<double>(bytes), losses);
        default:
            if (!QUtf8StringView(bytes).isValidUtf8()) return std::nullopt;
            return Value(QString::fromUtf8(bytes));
    }
}

}  // namespace

int OldTable::columnOf(QStringView field) const {
    for (size_t i = 0; i < fields.size(); ++i)
        if (field.compare(fields[i].name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
    return -1;
}

bool OldRow::take(QByteArrayView bytes) {
    Content content(bytes);
    m_bytes = bytes;
    for (size_t i = 0; i < m_at.size(); ++i) {
        m_at[i] = content.at();
        const auto type = static_cast<Cell>(m_table->cells[i]);
        switch (static_cast<oldfile::State>(content.number<char>())) {
            case oldfile::State::Null:
            case oldfile::State::Damaged:
                break;
            case oldfile::State::Value: {
                const quint32 width = oldfile::widthOf(type);
                const quint32 length = width > 0 ? width : content.number<quint32>();
                if (type == Cell::Other || length > oldfile::MostMemo) return false;
                content.take(length);
                break;
            }
            default:
                return false;
        }
    }
    return content.atEnd();
}

bool OldRow::cell(int column, QByteArrayView& bytes) const {
    Content content(m_bytes.sliced(m_at[static_cast<size_t>(column)]));
    const auto state = static_cast<oldfile::State>(content.number<char>());
    const quint32 width = oldfile::widthOf(static_cast<Cell>(m_table->cells[static_cast<size_t>(column)]));
    bytes = {};
    if (state == oldfile::State::Value) bytes = content.take(width > 0 ? width : content.number<quint32>());
    return state != oldfile::State::Damaged;
}

Value OldRow::value(int column, OldLosses& losses) const {
    QByteArrayView bytes;
    std::optional<Value> value;
    if (cell(column, bytes)) {
        if (bytes.isNull()) return {};
        value = valueOf(static_cast<Cell>(m_table->cells[static_cast<size_t>(column)]), bytes, losses);
    }
    if (!value) ++losses.values;
    return value.value_or(Value());
}

/// The messages, one after the other, out of a buffer that grows with the longest of them.
class OldFile::Input {
public:
    Input(Source source, qint64 most) : m_source(std::move(source)), m_most(most) {}

    /// False at the end, or where nothing came in time (silent()), or where too much came (flooded()).
    bool next(Message& message, QByteArrayView& content) {
        quint32 length = 0;
        if (!fill(1 + sizeof(length))) return false;
        message = static_cast<Message>(m_buffer[m_at]);
        std::memcpy(&length, m_buffer.constData() + m_at + 1, sizeof(length));
        if (length > oldfile::MostRow) m_flooded = true;
        if (m_flooded || !fill(1 + static_cast<qsizetype>(sizeof(length)) + length)) return false;
        content = QByteArrayView(m_buffer).sliced(m_at + 1 + sizeof(length), length);
        m_at += 1 + static_cast<qsizetype>(sizeof(length)) + length;
        return true;
    }
    bool head() {
        const QByteArrayView wanted(oldfile::Head, sizeof(oldfile::Head) - 1);
        if (!fill(wanted.size()) || QByteArrayView(m_buffer).first(wanted.size()) != wanted) return false;
        m_at += wanted.size();
        return true;
    }
    bool silent() const { return m_silent; }
    bool flooded() const { return m_flooded; }
    /// Nothing comes after what was read.
    bool atEnd() { return !fill(1) && !m_silent && !m_flooded; }

    std::unique_ptr<ChildProcess> process;

private:
    /// Sees to it that so many bytes lie behind the present place.
    bool fill(qsizetype count) {
        constexpr qsizetype piece = 1 << 18;
        while (m_end - m_at < count) {
            if (m_at > 0) {
                std::memmove(m_buffer.data(), m_buffer.constData() + m_at, static_cast<size_t>(m_end - m_at));
                m_end -= m_at;
                m_at = 0;
            }
            if (m_buffer.size() < m_end + piece) m_buffer.resize(std::max(m_end + piece, count));
            const qsizetype got = m_source(m_buffer.data() + m_end, m_buffer.size() - m_end);
            m_silent = got < 0;
            if (got <= 0) return false;
            m_end += got;
            m_most -= got;
            m_flooded = m_most < 0;
            if (m_flooded) return false;
        }
        return true;
    }

    Source m_source;
    qint64 m_most;
    QByteArray m_buffer;
    qsizetype m_at = 0, m_end = 0;
    bool m_silent = false, m_flooded = false;
};

OldFile::OldFile(const QString& path, const QStringList& tables, std::function<bool()> on) : m_path(path) {
    if (!readsOldFiles)
        fail(
            QStringLiteral("KOBEN für Windows liest keine alten Datenbanken; sie bleibt unverändert. Bitte lassen Sie "
                           "den Datenordner mit KOBEN unter Linux umstellen und kopieren Sie ihn dann hierher, oder "
                           "verschieben Sie die Datei in einen anderen Ordner und lesen Sie die Tiere aus einer "
                           "CSV-Datei ein (Optionen / Import Excel)."));
    const QString program = helperProgram();
    if (!QFileInfo(program).isExecutable())
        fail(QStringLiteral("Das Hilfsprogramm %1, das alte Datenbanken liest, ist nicht da. Bitte installieren Sie "
                            "KOBEN neu.")
                 .arg(program));
    auto process = std::make_unique<ChildProcess>(program, QStringList{QFileInfo(path).absoluteFilePath()} + tables);
    if (!process->started())
        fail(QStringLiteral("Das Hilfsprogramm %1, das alte Datenbanken liest, lässt sich nicht starten. Bitte beenden "
                            "Sie andere Programme, oder starten Sie den Rechner neu.")
                 .arg(program));
    const int patience = helper().patience > 0 ? helper().patience : Patience;
    ChildProcess* reading = process.get();
    const auto source = [path, reading, patience, on = std::move(on)](char* buffer, qsizetype most) -> qsizetype {
        qsizetype count = 0;
        for (int waited = 0; waited < patience; waited += AskAfter) {
            if (reading->read(buffer, most, std::min(AskAfter, patience), count) != ChildProcess::Read::Timeout)
                return count;
            if (on && !on())
                throw DatabaseError(DatabaseError::Kind::Io,
                                    QStringLiteral("Das Lesen der alten Datenbank %1 wurde abgebrochen.")
                                        .arg(QDir::toNativeSeparators(path)));
        }
        return -1;
    };
    m_input = std::make_unique<Input>(source, Slack + Swell * QFileInfo(path).size());
    m_input->process = std::move(process);
    readTables();
}

OldFile::OldFile(const QString& path, Source source, qint64 most)
    : m_path(path), m_input(std::make_unique<Input>(std::move(source), most)) {
    readTables();
}

OldFile::~OldFile() = default;

bool OldFile::isOld(const QString& path) {
    constexpr qsizetype version = 0x14;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray head = file.read(version + 1);
    return head.size() == version + 1 && head.startsWith(QByteArray("\0\1\0\0Standard Jet DB\0", 20)) &&
           head[version] >= 0 && head[version] <= 1;
}

void OldFile::setHelper(const QString& program, int patienceMs) { helper() = {program, patienceMs}; }

qint64 OldFile::rowsTold() const {
    qint64 rows = 0;
    for (const OldTable& table : m_tables) rows += table.rows;
    return rows;
}

void OldFile::fail(const QString& cause) const {
    throw DatabaseError(DatabaseError::Kind::Io, QStringLiteral("Die alte Datenbank %1 kann nicht gelesen werden. %2")
                                                     .arg(QDir::toNativeSeparators(m_path), cause));
}

/// Says what became of the reading where the next message is none.
void OldFile::nonsense() const {
    const QString where = m_next > 0 ? QStringLiteral(" in der Tabelle %1").arg(m_tables[m_next - 1].name) : QString();
    if (m_input->silent())
        fail(QStringLiteral("Das Lesen kam%1 nicht mehr voran und wurde abgebrochen. Bitte prüfen Sie den Datenträger, "
                            "oder nehmen Sie eine andere Kopie der Datei.")
                 .arg(where));
    fail(QStringLiteral("Sie ist beschädigt: Das Lesen brach%1 ab. Sie bleibt unverändert, und es wurde nichts "
                        "übernommen. Bitte nehmen Sie eine andere Kopie der Datei.")
             .arg(where));
}

void OldFile::told(QByteArrayView content) const {
    if (content.size() != 1) nonsense();
    switch (static_cast<oldfile::Failure>(content[0])) {
        case oldfile::Failure::Unreadable:
            fail(
                QStringLiteral("Die Datei gibt es nicht, oder sie darf nicht gelesen werden. Bitte prüfen Sie Ordner "
                               "und Rechte."));
        case oldfile::Failure::NotOld:
            if (isAccdb(m_path))
                fail(
                    QStringLiteral("Sie hat das Format ACCDB, das KOBEN nicht liest. Bitte speichern Sie sie mit dem "
                                   "Programm, das sie geschrieben hat, im Format MDB (2000 oder 2002-2003), und "
                                   "wiederholen Sie die Übernahme."));
            fail(
                QStringLiteral("Sie ist keine Datenbank im alten Format (Jet 3 oder Jet 4), oder ihr Anfang ist "
                               "beschädigt. Bitte nehmen Sie eine andere Kopie der Datei."));
        case oldfile::Failure::NoCatalogue:
            fail(
                QStringLiteral("Ihr Verzeichnis der Tabellen ist beschädigt und nicht lesbar. Bitte nehmen Sie eine "
                               "andere Kopie der Datei."));
    }
    nonsense();
}

void OldFile::readTables() {
    if (!m_input->head()) nonsense();
    for (;;) {
        Message message{};
        QByteArrayView content;
        if (!m_input->next(message, content)) nonsense();
        switch (message) {
            case Message::Failure:
                told(content);
            case Message::Table:
                readTable(content);
                continue;
            case Message::Rows:
                if (m_tables.empty()) nonsense();
                m_inTable = true;
                return;
            case Message::Done:
                m_done = true;
                if (!m_tables.empty() || !m_input->atEnd()) nonsense();
                return;
            default:
                nonsense();
        }
    }
}

void OldFile::readTable(QByteArrayView bytes) {
    if (m_tables.size() >= oldfile::MostTables) nonsense();
    Content content(bytes);
    OldTable table;
    table.rows = content.number<quint32>();
    table.lastNumber = content.number<qint32>();
    table.readable = content.number<quint8>() != 0;
    table.name = content.name();
    const auto columns = content.number<quint16>();
    if (columns > oldfile::MostColumns || table.readable != (columns > 0)) nonsense();
    for (int i = 0; i < columns; ++i) {
        const auto type = content.number<char>();
        const auto size = content.number<quint16>();
        if (content.number<quint8>() != 0) table.counter = i;
        if (type < static_cast<char>(Cell::Bool) || type > static_cast<char>(Cell::Other)) nonsense();
        table.cells.push_back(type);
        table.fields.push_back({content.name(), typeOf(static_cast<Cell>(type)),
                                static_cast<Cell>(type) == Cell::Text ? static_cast<int>(size) : 0});
    }
    if (!content.atEnd()) nonsense();
    m_tables.push_back(std::move(table));
}

const OldTable* OldFile::nextTable() {
    if (m_next > 0)
        while (nextRow()) {
        }
    if (m_done) return nullptr;
    if (m_next > 0) {
        Message message{};
        QByteArrayView content;
        if (!m_input->next(message, content)) nonsense();
        if (m_next < m_tables.size() ? message != Message::Rows : message != Message::Done || !m_input->atEnd())
            nonsense();
        m_inTable = message == Message::Rows;
        m_done = !m_inTable;
        if (m_done && m_input->process && !m_input->process->endedWell()) nonsense();
        if (m_done) return nullptr;
    }
    m_rowsHere = m_rowsLost = 0;
    const OldTable* table = &m_tables[m_next++];
    m_row = std::make_unique<OldRow>(*table);
    return table;
}

bool OldFile::nextRow() {
    if (!m_inTable) return false;
    Message message{};
    QByteArrayView content;
    if (!m_input->next(message, content)) nonsense();
    if (message == Message::End) {
        endTable(content);
        return false;
    }
    if (message != Message::Row || !m_row->take(content)) nonsense();
    ++m_rowsRead;
    ++m_rowsHere;
    return true;
}

void OldFile::endTable(QByteArrayView bytes) {
    Content content(bytes);
    const qint64 sent = content.number<quint32>(), damaged = content.number<quint32>();
    if (!content.atEnd() || sent != m_rowsHere) nonsense();
    m_inTable = false;
    m_rowsLost = std::max(damaged, m_tables[m_next - 1].rows - sent);
}

}  // namespace koben
