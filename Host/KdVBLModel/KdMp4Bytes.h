#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QByteArray>
#include <QtGlobal>

/**
 * Reads big-endian numbers from bytes that may end anywhere: what is not there reads as 0, and
 * isGood() then stays false. The bytes must outlive the reader.
 */
class KDVBLMODEL_EXPORT KdMp4ByteReader
{
public:
    explicit KdMp4ByteReader(const QByteArray& bytes) : m_bytes(bytes) {}

    quint32 u8() { return quint32(number(1)); }
    quint32 u24() { return quint32(number(3)); }
    quint32 u32() { return quint32(number(4)); }
    quint64 u64() { return number(8); }
    void skip(int count);

    bool isGood() const { return m_isGood; }
    int left() const { return m_bytes.size() - m_position; }

private:
    quint64 number(int size);

    const QByteArray& m_bytes;
    int m_position = 0;
    bool m_isGood = true;
};

/** Puts big-endian numbers together. */
class KDVBLMODEL_EXPORT KdMp4ByteWriter
{
public:
    KdMp4ByteWriter& u32(quint32 value) { return number(value, 4); }
    KdMp4ByteWriter& u64(quint64 value) { return number(value, 8); }

    const QByteArray& bytes() const { return m_bytes; }

private:
    KdMp4ByteWriter& number(quint64 value, int size);

    QByteArray m_bytes;
};
