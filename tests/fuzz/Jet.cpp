// Old database files. An input that begins with "S" is what the helper might say, and is read to its end or refused in
// German. Any other is damage to a small file of the old engine, four bytes each: where (three) and what is put there;
// a place beyond the end cuts the file. Read through the helper it gives rows or a message.
#include <QTemporaryDir>
#include <cstring>

#include "store/DatabaseError.h"
#include "store/OldFile.h"
#include "tests/fuzz/Require.h"
#include "tools/altdatei/OldFileWriter.h"

namespace koben::fuzz {
namespace {

QByteArray sample(int version) {
    OldFileWriter file(version);
    file.table("Sauen", "Nummer TEXT (15), Infos MEMO, Preis CURRENCY, Tag DATETIME, Ja YESNO, Kg SINGLE, ID COUNTER");
    for (int i = 0; i < 40; ++i)
        file.row("Sauen",
                 {{"Nummer", QString::number(i)},
                  {"Infos", QString("Käse€").repeated(i * i)},
                  {"Preis", Money{i}},
                  {"Tag", i - 20.5}},
                 static_cast<OldFileWriter::Fate>(i % 3));
    return file.bytes();
}

void readAll(OldFile& file) {
    OldLosses losses;
    while (const OldTable* table = file.nextTable()) {
        require(!table->name.isEmpty() && table->cells.size() == table->fields.size(), "a table");
        while (file.nextRow())
            for (int i = 0; i < static_cast<int>(table->fields.size()); ++i) {
                const Value value = file.row().value(i, losses);
                require(value.isNull() || table->fields[static_cast<size_t>(i)].type != Type::Null,
                        "a value of no type");
                if (value.isDate()) require(value.toDate().isValid() && value.toDate().year() < 10000, "a day");
            }
        require(losses.values >= 0 && losses.cutTimes >= 0, "losses");
    }
}

void demandMessage(const DatabaseError& error) {
    require(error.message().startsWith(QStringLiteral("Die alte Datenbank ")) && error.message().endsWith(u'.'),
            "no sentence", error.message());
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    if (size == 0) return -1;
    static const QTemporaryDir folder(place());
    const QString path = folder.filePath(QStringLiteral("alt.mdb"));
    try {
        if (data[0] == 'S') {
            QByteArray rest = raw(data + 1, size - 1);
            const auto source = [&rest](char* buffer, qsizetype most) {
                const qsizetype count = std::min({most, rest.size(), qsizetype{7}});
                std::memcpy(buffer, rest.constData(), static_cast<size_t>(count));
                rest.remove(0, count);
                return count;
            };
            OldFile file(path, source, 1 << 20);
            readAll(file);
        } else {
            static const QByteArray samples[] = {sample(3), sample(4)};
            QByteArray bytes = samples[data[0] % 2];
            for (size_t i = 1; i + 4 <= size; i += 4) {
                const qsizetype at = data[i] | data[i + 1] << 8 | data[i + 2] << 16;
                if (at >= bytes.size())
                    bytes.truncate(at % (samples[0].size() + 1));
                else
                    bytes[at] = static_cast<char>(data[i + 3]);
            }
            writeFile(path, bytes);
            OldFile file(path);
            readAll(file);
        }
    } catch (const DatabaseError& error) {
        demandMessage(error);
    }
    return 0;
}
