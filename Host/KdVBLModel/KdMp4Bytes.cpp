#include "KdMp4Bytes.h"

quint64 KdMp4ByteReader::number(int size)
{
    if (left() < size) {
        m_isGood = false;
        m_position = m_bytes.size();
        return 0;
    }
    quint64 value = 0;
    for (int i = 0; i < size; ++i) {
        value = (value << 8) | quint8(m_bytes.at(m_position++));
    }
    return value;
}

void KdMp4ByteReader::skip(int count)
{
    if (count < 0 || left() < count) {
        m_isGood = false;
        m_position = m_bytes.size();
        return;
    }
    m_position += count;
}

KdMp4ByteWriter& KdMp4ByteWriter::number(quint64 value, int size)
{
    for (int i = size - 1; i >= 0; --i) {
        m_bytes.append(char(quint8(value >> (8 * i))));
    }
    return *this;
}
