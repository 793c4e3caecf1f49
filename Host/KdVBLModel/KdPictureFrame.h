#pragma once

#include <KdVBLModel/KdPictureShaper.h>

#include <gst/video/video.h>

/** The planes of an I420 picture in a buffer, for as long as this object lives. */
class KdPictureFrame
{
public:
    /** @param buffer lent; null is allowed and invalid */
    KdPictureFrame(const GstVideoInfo& info, GstBuffer* buffer, GstMapFlags access);
    ~KdPictureFrame();

    /** Whether the buffer holds a picture of that size and kind. */
    bool isValid() const { return m_isValid; }

    KdPicturePlanes<uint8_t> planes() const;
    KdPicturePlanes<const uint8_t> constPlanes() const;

private:
    KdPictureFrame(const KdPictureFrame&) = delete;
    KdPictureFrame& operator=(const KdPictureFrame&) = delete;

    GstVideoFrame m_frame;
    bool m_isMapped = false;
    bool m_isValid = false;
};
