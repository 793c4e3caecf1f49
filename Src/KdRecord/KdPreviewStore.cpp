#include "KdPreviewStore.h"

#include <cstring>
#include <new>
#include <utility>

namespace {

KdPreviewPicture takeOut(KdPreviewPicture* from)
{
    return std::exchange(*from, KdPreviewPicture());
}

} // namespace

bool KdPreviewStore::Buffer::keep(const KdPreviewFrame& newFrame)
{
    const qint64 size = newFrame.byteCount();
    if (size != frame().byteCount()) {
        bytes.reset();
        bytes.reset(new (std::nothrow) uchar[std::size_t(size)]);
    }
    if (!bytes) {
        *this = Buffer();
        return false;
    }
    width = newFrame.width;
    height = newFrame.height;
    std::memcpy(bytes.get(), newFrame.bits, std::size_t(size));
    return true;
}

bool KdPreviewStore::put(const KdPreviewFrame& frame)
{
    Draft draft;
    if (!frame.isValid() || !begin(&draft)) {
        return false;
    }
    if (!draft.look.area.isEmpty()) {
        draft.picture.draw(frame, draft.look);
    }
    return end(frame, &draft);
}

bool KdPreviewStore::begin(Draft* draft)
{
    const std::unique_lock<std::mutex> lock(m_lock, std::try_to_lock);
    if (!lock) {
        return false;
    }
    if (m_isRendering && !m_look.area.isEmpty()) {
        draft->look = m_look;
        draft->picture = takeOut(&m_spare);
    }
    return true;
}

bool KdPreviewStore::end(const KdPreviewFrame& frame, Draft* draft)
{
    const std::unique_lock<std::mutex> lock(m_lock, std::try_to_lock);
    if (!lock || !m_buffer.keep(frame)) {
        return false;
    }
    ++m_serial;
    if (m_isRendering && !draft->picture.image.isNull()) {
        draft->picture.serial = m_serial;
        KdPreviewPicture former = std::exchange(m_ready, std::move(draft->picture));
        if (!former.image.isNull()) {
            m_spare = std::move(former);
        }
    }
    return true;
}

void KdPreviewStore::setRendering(bool on)
{
    const std::lock_guard<std::mutex> lock(m_lock);
    m_isRendering = on;
}

bool KdPreviewStore::isRendering() const
{
    const std::lock_guard<std::mutex> lock(m_lock);
    return m_isRendering;
}

void KdPreviewStore::clear()
{
    const std::lock_guard<std::mutex> lock(m_lock);
    free();
}

void KdPreviewStore::rest()
{
    const std::lock_guard<std::mutex> lock(m_lock);
    m_look = KdPreviewLook();
}

qint64 KdPreviewStore::bufferSize() const
{
    const std::lock_guard<std::mutex> lock(m_lock);
    return m_buffer.frame().byteCount();
}

void KdPreviewStore::free()
{
    m_buffer = Buffer();
    m_ready = KdPreviewPicture();
    m_spare = KdPreviewPicture();
    m_shown = KdPreviewPicture();
}

const KdPreviewPicture* KdPreviewStore::picture(const KdPreviewLook& look)
{
    if (!takeReadyPicture(look)) {
        drawKeptFrame(look);
    }
    return m_shown.image.isNull() ? nullptr : &m_shown;
}

/** @return whether what is shown now needs no drawing. */
bool KdPreviewStore::takeReadyPicture(const KdPreviewLook& look)
{
    const std::lock_guard<std::mutex> lock(m_lock);
    m_look = look;
    if (!m_isRendering || !m_buffer.frame().isValid()) {
        free();
        return true;
    }
    if (m_ready.serial != 0) {
        m_spare = std::exchange(m_shown, takeOut(&m_ready));
    }
    return m_shown.serial == m_serial && m_shown.look == look;
}

/** The frame is borrowed meanwhile, so that one that comes now finds the lock free. */
void KdPreviewStore::drawKeptFrame(const KdPreviewLook& look)
{
    Buffer borrowed;
    {
        const std::lock_guard<std::mutex> lock(m_lock);
        borrowed = std::exchange(m_buffer, Buffer());
        m_shown.serial = m_serial;
    }
    if (!borrowed.frame().isValid()) {
        m_shown.image = QImage();
        return;
    }
    m_shown.draw(borrowed.frame(), look);
    const std::lock_guard<std::mutex> lock(m_lock);
    if (!m_buffer.bytes) {
        m_buffer = std::move(borrowed);
    }
}
