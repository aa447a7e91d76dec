#include "store/ReportSalvage.h"

#include "store/ReportStore.h"

#include <QFile>
#include <QHash>
#include <QList>
#include <QSet>
#include <QtEndian>

// The layouts read here are SQLite's documented file format (the database
// file format and the write-ahead log format pages of sqlite.org): a file of
// fixed-size pages, page 1 starting with a 100-byte header; table leaf pages
// (type 13) holding cells of (payload size, row id, payload) with long
// payloads continued on a chain of overflow pages; records made of a header
// of serial types and a body. The log is a 32-byte header followed by frames
// of a 24-byte header and one page.

namespace {

constexpr int tableLeafPage = 0x0d;
constexpr quint32 walMagic = 0x377f0682;
constexpr int walHeaderSize = 32;
constexpr int walFrameHeaderSize = 24;

quint32 be32(const uchar* p)
{
    return qFromBigEndian<quint32>(p);
}

quint16 be16(const uchar* p)
{
    return qFromBigEndian<quint16>(p);
}

// SQLite's variable-length integer: up to 9 bytes, the ninth giving all 8
// bits. False when it runs past `end`.
bool readVarint(const uchar*& p, const uchar* end, quint64& value)
{
    value = 0;
    for (int i = 0; i < 9; ++i) {
        if (p >= end)
            return false;
        const uchar byte = *p++;
        if (i == 8) {
            value = (value << 8) | byte;
            return true;
        }
        value = (value << 7) | (byte & 0x7f);
        if (!(byte & 0x80))
            return true;
    }
    return false;
}

// One column of a record as its serial type says.
struct Column {
    enum Kind { Null, Integer, Blob, Other } kind = Other;
    qint64 integer = 0;
    QByteArray blob;
};

qint64 bigEndianSigned(const uchar* p, int bytes)
{
    qint64 value = (p[0] & 0x80) ? -1 : 0;
    for (int i = 0; i < bytes; ++i)
        value = qint64(quint64(value) << 8 | p[i]);
    return value;
}

// Decodes a record's columns; empty when it is not a well-formed record.
// At most `maxColumns` are read: the rows looked for have three or four.
QList<Column> decodeRecord(const QByteArray& payload, int maxColumns)
{
    const auto* data = reinterpret_cast<const uchar*>(payload.constData());
    const uchar* end = data + payload.size();
    const uchar* p = data;
    quint64 headerSize = 0;
    if (!readVarint(p, end, headerSize) || headerSize > quint64(payload.size()) ||
        headerSize < quint64(p - data))
        return {};
    const uchar* headerEnd = data + headerSize;
    const uchar* body = headerEnd;
    QList<Column> columns;
    while (p < headerEnd) {
        if (columns.size() >= maxColumns)
            return {};
        quint64 type = 0;
        if (!readVarint(p, headerEnd, type))
            return {};
        Column column;
        static const int intBytes[] = {0, 1, 2, 3, 4, 6, 8};
        quint64 size = 0;
        if (type == 0) {
            column.kind = Column::Null;
        } else if (type <= 6) {
            size = quint64(intBytes[type]);
            if (quint64(end - body) < size)
                return {};
            column.kind = Column::Integer;
            column.integer = bigEndianSigned(body, int(size));
        } else if (type == 7) {
            size = 8;
        } else if (type == 8 || type == 9) {
            column.kind = Column::Integer;
            column.integer = qint64(type - 8);
        } else if (type >= 12) {
            size = (type - 12) / 2;
            if (type % 2 == 0) {
                if (quint64(end - body) < size)
                    return {};
                column.kind = Column::Blob;
                column.blob = QByteArray(reinterpret_cast<const char*>(body), qsizetype(size));
            }
        } else {
            return {};
        }
        if (quint64(end - body) < size)
            return {};
        body += size;
        columns.append(column);
    }
    return body == end ? columns : QList<Column>();
}

// The pages of the database as the log and the file give them.
class Pages {
public:
    Pages(const QByteArray& file, const QByteArray& wal, int pageSize)
        : m_file(file), m_wal(wal), m_pageSize(pageSize)
    {
        layLog();
        m_count = qMax<qint64>(file.size() / pageSize, m_logSize);
        for (auto it = m_fromLog.cbegin(); it != m_fromLog.cend(); ++it)
            m_count = qMax<qint64>(m_count, it.key());
    }

    qint64 count() const { return m_count; }
    int pageSize() const { return m_pageSize; }

    // Page `number` (from 1), or nothing when neither file holds it.
    const uchar* page(qint64 number) const
    {
        if (number < 1 || number > m_count)
            return nullptr;
        const auto fromLog = m_fromLog.constFind(number);
        if (fromLog != m_fromLog.cend())
            return reinterpret_cast<const uchar*>(m_wal.constData()) + *fromLog;
        const qint64 at = (number - 1) * m_pageSize;
        if (at + m_pageSize > m_file.size())
            return nullptr;
        return reinterpret_cast<const uchar*>(m_file.constData()) + at;
    }

private:
    // The log's checksum: pairs of 32-bit words in the byte order the
    // header's magic number names, summed into two running totals.
    static void checksum(bool bigEndian, const uchar* data, qsizetype size, quint32& s0,
                         quint32& s1)
    {
        for (qsizetype i = 0; i + 8 <= size; i += 8) {
            const quint32 x0 = bigEndian ? qFromBigEndian<quint32>(data + i)
                                         : qFromLittleEndian<quint32>(data + i);
            const quint32 x1 = bigEndian ? qFromBigEndian<quint32>(data + i + 4)
                                         : qFromLittleEndian<quint32>(data + i + 4);
            s0 += x0 + s1;
            s1 += x1 + s0;
        }
    }

    struct Frame {
        qsizetype at = 0; // of its header in the log
        bool valid = false;
    };

    // Checks each frame against the checksum stored in the frame before it
    // (not the running total SQLite keeps): so one damaged frame fails alone
    // and the frames after it are still known good.
    QList<Frame> frames(bool bigEndian, quint32 salt1, quint32 salt2) const
    {
        const auto* log = reinterpret_cast<const uchar*>(m_wal.constData());
        const qsizetype frameSize = walFrameHeaderSize + m_pageSize;
        QList<Frame> result;
        quint32 seed0 = be32(log + 24);
        quint32 seed1 = be32(log + 28);
        for (qsizetype at = walHeaderSize; at + frameSize <= m_wal.size(); at += frameSize) {
            const uchar* header = log + at;
            quint32 s0 = seed0;
            quint32 s1 = seed1;
            checksum(bigEndian, header, 8, s0, s1);
            checksum(bigEndian, header + walFrameHeaderSize, m_pageSize, s0, s1);
            seed0 = be32(header + 16);
            seed1 = be32(header + 20);
            const bool valid = be32(header) != 0 && be32(header + 8) == salt1 &&
                               be32(header + 12) == salt2 && s0 == seed0 && s1 == seed1;
            result.append({at, valid});
        }
        return result;
    }

    void layLog()
    {
        if (m_wal.size() < walHeaderSize + walFrameHeaderSize + m_pageSize)
            return;
        const auto* log = reinterpret_cast<const uchar*>(m_wal.constData());
        // With a sound header its byte order and salts are used; with a
        // damaged one, both byte orders are tried with the first frame's
        // salts, and the order under which more frames check out is kept.
        const bool headerNamesOrder = (be32(log) & ~1u) == walMagic;
        QList<Frame> best;
        for (const bool bigEndian : {true, false}) {
            quint32 s0 = 0;
            quint32 s1 = 0;
            checksum(bigEndian, log, 24, s0, s1);
            const bool headerSound = headerNamesOrder && bool(be32(log) & 1) == bigEndian &&
                                     s0 == be32(log + 24) && s1 == be32(log + 28);
            const quint32 salt1 = headerSound ? be32(log + 16) : be32(log + walHeaderSize + 8);
            const quint32 salt2 = headerSound ? be32(log + 20) : be32(log + walHeaderSize + 12);
            const QList<Frame> found = frames(bigEndian, salt1, salt2);
            const auto good = [](const QList<Frame>& list) {
                return std::count_if(list.cbegin(), list.cend(),
                                     [](const Frame& f) { return f.valid; });
            };
            if (good(found) > good(best))
                best = found;
        }
        // Frames after the last good commit frame belong to a change that
        // never finished: they are left out, as SQLite leaves them out.
        qsizetype lastCommit = -1;
        for (qsizetype i = 0; i < best.size(); ++i) {
            if (best[i].valid && be32(log + best[i].at + 4) != 0)
                lastCommit = i;
        }
        for (qsizetype i = 0; i <= lastCommit; ++i) {
            if (!best[i].valid)
                continue;
            m_fromLog.insert(be32(log + best[i].at), best[i].at + walFrameHeaderSize);
        }
        if (lastCommit >= 0)
            m_logSize = be32(log + best[lastCommit].at + 4);
    }

    const QByteArray& m_file;
    const QByteArray& m_wal;
    int m_pageSize;
    qint64 m_count = 0;
    qint64 m_logSize = 0;
    QHash<qint64, qsizetype> m_fromLog;
};

// The pages on the free list, or none when the list does not read as a
// sound one (a damaged header): then nothing is left out.
QSet<qint64> freePages(const Pages& pages)
{
    const uchar* first = pages.page(1);
    if (!first)
        return {};
    qint64 trunk = be32(first + 32);
    const qint64 expected = be32(first + 36);
    const qint64 perTrunk = pages.pageSize() / 4 - 2;
    QSet<qint64> free;
    while (trunk != 0) {
        if (trunk < 2 || trunk > pages.count() || free.contains(trunk) ||
            free.size() > pages.count())
            return {};
        const uchar* page = pages.page(trunk);
        if (!page)
            return {};
        free.insert(trunk);
        const qint64 leaves = be32(page + 4);
        if (leaves > perTrunk)
            return {};
        for (qint64 i = 0; i < leaves; ++i) {
            const qint64 leaf = be32(page + 8 + 4 * i);
            if (leaf < 2 || leaf > pages.count() || free.contains(leaf))
                return {};
            free.insert(leaf);
        }
        trunk = be32(page);
    }
    return free.size() == expected ? free : QSet<qint64>();
}

// A cell's whole payload, following its overflow chain; empty when the
// cell does not hold together.
std::optional<QByteArray> payloadOf(const Pages& pages, const uchar* page, int cellAt,
                                    quint64* rowId)
{
    const int usable = pages.pageSize();
    const uchar* p = page + cellAt;
    const uchar* end = page + usable;
    quint64 size = 0;
    if (!readVarint(p, end, size) || !readVarint(p, end, *rowId))
        return std::nullopt;
    if (size > quint64(pages.count()) * quint64(usable))
        return std::nullopt;
    // How much of the payload stays on the leaf page (the format's rule).
    const quint64 maxLocal = quint64(usable - 35);
    quint64 local = size;
    if (size > maxLocal) {
        const quint64 minLocal = quint64((usable - 12) * 32 / 255 - 23);
        const quint64 k = minLocal + (size - minLocal) % quint64(usable - 4);
        local = k <= maxLocal ? k : minLocal;
    }
    if (quint64(end - p) < local + (local < size ? 4 : 0))
        return std::nullopt;
    QByteArray payload(reinterpret_cast<const char*>(p), qsizetype(local));
    qint64 next = local < size ? be32(p + local) : 0;
    // Each overflow page gives usable - 4 bytes; the chain can be no longer
    // than the file has pages.
    for (qint64 hops = 0; quint64(payload.size()) < size; ++hops) {
        const uchar* overflow = pages.page(next);
        if (!overflow || hops > pages.count())
            return std::nullopt;
        const quint64 take = qMin<quint64>(size - quint64(payload.size()), quint64(usable - 4));
        payload.append(reinterpret_cast<const char*>(overflow + 4), qsizetype(take));
        next = be32(overflow);
    }
    return payload;
}

ReportSalvage::Result scan(const Pages& pages)
{
    ReportSalvage::Result result;
    const QSet<qint64> free = freePages(pages);
    const int usable = pages.pageSize();
    for (qint64 number = 1; number <= pages.count(); ++number) {
        const uchar* page = pages.page(number);
        const int headerAt = number == 1 ? 100 : 0;
        if (!page || free.contains(number) || page[headerAt] != tableLeafPage)
            continue;
        const int cells = be16(page + headerAt + 3);
        const int pointers = headerAt + 8;
        if (pointers + 2 * cells > usable)
            continue;
        for (int i = 0; i < cells; ++i) {
            const int cellAt = be16(page + pointers + 2 * i);
            if (cellAt < pointers + 2 * cells || cellAt >= usable)
                continue;
            quint64 rowId = 0;
            const std::optional<QByteArray> payload = payloadOf(pages, page, cellAt, &rowId);
            if (!payload)
                continue;
            const QList<Column> columns = decodeRecord(*payload, 4);
            if (columns.size() == 3 && columns[0].kind == Column::Null &&
                columns[1].kind == Column::Blob && columns[2].kind == Column::Integer) {
                if (ReportStore::checksumOf(columns[1].blob) != columns[2].integer) {
                    ++result.unverified;
                    continue;
                }
                result.rows.insert(qint64(rowId), columns[1].blob);
            } else if (columns.size() == 4 && columns[0].kind == Column::Null &&
                       columns[1].kind == Column::Integer && columns[2].kind == Column::Integer &&
                       columns[3].kind == Column::Integer &&
                       ReportSalvage::stateChecksum(columns[1].integer, columns[2].integer) ==
                           columns[3].integer) {
                if (!result.state || result.state->changes < columns[1].integer)
                    result.state = ReportSalvage::ListState{columns[1].integer, columns[2].integer};
            }
        }
    }
    return result;
}

std::optional<QByteArray> readWhole(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return QByteArray();
    if (!file.open(QIODevice::ReadOnly) || file.size() > ReportSalvage::maxFileSize)
        return std::nullopt;
    const QByteArray bytes = file.read(ReportSalvage::maxFileSize);
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

} // namespace

qint64 ReportSalvage::stateChecksum(qint64 changes, qint64 records)
{
    return ReportStore::checksumOf(QByteArray::number(changes) + ':' + QByteArray::number(records));
}

ReportSalvage::Result ReportSalvage::read(const QString& databasePath, const QString& walPath)
{
    const std::optional<QByteArray> file = readWhole(databasePath);
    const std::optional<QByteArray> wal = readWhole(walPath);
    if (!file || !wal)
        return {};
    // The page size: the one the headers name, else the usual one, else
    // any the format allows; the one that yields the most rows is kept (a
    // damaged header may name a wrong but possible size).
    QList<int> sizes;
    if (file->size() >= 18) {
        const int named = be16(reinterpret_cast<const uchar*>(file->constData()) + 16);
        sizes << (named == 1 ? 65536 : named);
    }
    if (wal->size() >= 12)
        sizes << int(be32(reinterpret_cast<const uchar*>(wal->constData()) + 8));
    sizes << 4096;
    for (int size = 512; size <= 65536; size *= 2)
        sizes << size;
    Result best;
    QSet<int> tried;
    for (const int size : std::as_const(sizes)) {
        if (size < 512 || size > 65536 || (size & (size - 1)) != 0 || tried.contains(size))
            continue;
        tried.insert(size);
        const Pages pages(*file, *wal, size);
        Result found = scan(pages);
        if (found.rows.size() > best.rows.size() ||
            (found.rows.size() == best.rows.size() && !best.state && found.state))
            best = found;
    }
    best.readable = true;
    return best;
}
