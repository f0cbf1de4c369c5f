#pragma once
// Archives as no packer makes them: each field as a test wants it.
#include <QByteArray>
#include <QtEndian>
#include <vector>

namespace koben {

struct RawEntry {
    QByteArray name;
    QByteArray bytes = "x";
    quint16 flags = 0x0800;  ///< 1 encrypted, 0x0800 the name is UTF-8
    quint32 kind = 0100000;  ///< as Unix tells files from links
    qint64 declared = -1;    ///< size unpacked; -1 for the true one
    QByteArray packed = {};  ///< deflated content; "" for stored
    bool wrongSum = false;
};

inline quint32 checksum(const QByteArray& bytes) {
    quint32 sum = ~0U;
    for (const char c : bytes) {
        sum ^= static_cast<quint8>(c);
        for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320U : 0);
    }
    return ~sum;
}

inline QByteArray deflated(const QByteArray& bytes) { return qCompress(bytes, 9).mid(6).chopped(4); }

inline QByteArray rawZip(const std::vector<RawEntry>& entries) {
    QByteArray file, directory;
    const auto put = [](QByteArray& to, auto value) {
        const auto little = qToLittleEndian(value);
        to.append(reinterpret_cast<const char*>(&little), sizeof little);
    };
    for (const RawEntry& entry : entries) {
        const QByteArray& content = entry.packed.isEmpty() ? entry.bytes : entry.packed;
        QByteArray fields;
        put(fields, quint16{20});
        put(fields, entry.flags);
        put(fields, quint16(entry.packed.isEmpty() ? 0 : 8));
        put(fields, quint32{0x5CEF4000});  // a day and an hour
        put(fields, quint32(checksum(entry.bytes) + entry.wrongSum));
        put(fields, quint32(content.size()));
        put(fields, quint32(entry.declared < 0 ? entry.bytes.size() : entry.declared));
        put(fields, quint16(entry.name.size()));
        put(fields, quint16{0});
        const auto at = static_cast<quint32>(file.size());
        file += "PK\3\4" + fields + entry.name + content;
        directory += "PK\1\2";
        put(directory, quint16{0x0314});  // made on Unix
        directory += fields;
        put(directory, quint16{0});
        put(directory, quint32{0});
        put(directory, quint32(entry.kind << 16));
        put(directory, at);
        directory += entry.name;
    }
    const auto at = static_cast<quint32>(file.size());
    QByteArray end("PK\5\6");
    put(end, quint32{0});
    for (int i = 0; i < 2; ++i) put(end, static_cast<quint16>(entries.size()));
    put(end, static_cast<quint32>(directory.size()));
    put(end, at);
    put(end, quint16{0});
    return file + directory + end;
}

}  // namespace koben
