#include <KdVBLModel/KdPictureFrame.h>

namespace {

template <typename Byte>
KdPicturePlanes<Byte> planesOf(const GstVideoFrame& frame)
{
    KdPicturePlanes<Byte> planes;
    for (size_t i = 0; i < planes.data.size(); ++i) {
        planes.data[i] = static_cast<Byte*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, i));
        planes.stride[i] = GST_VIDEO_FRAME_PLANE_STRIDE(&frame, i);
    }
    return planes;
}

} // namespace

KdPictureFrame::KdPictureFrame(const GstVideoInfo& info, GstBuffer* buffer, GstMapFlags access)
{
    GstVideoInfo copy = info; // GStreamer wants one that it might change
    m_isMapped = buffer && gst_video_frame_map(&m_frame, &copy, buffer, access);
    // The buffer's own description wins over ours.
    m_isValid = m_isMapped && GST_VIDEO_FRAME_FORMAT(&m_frame) == GST_VIDEO_FORMAT_I420 &&
                GST_VIDEO_FRAME_WIDTH(&m_frame) == GST_VIDEO_INFO_WIDTH(&info) &&
                GST_VIDEO_FRAME_HEIGHT(&m_frame) == GST_VIDEO_INFO_HEIGHT(&info);
}

KdPictureFrame::~KdPictureFrame()
{
    if (m_isMapped) {
        gst_video_frame_unmap(&m_frame);
    }
}

KdPicturePlanes<uint8_t> KdPictureFrame::planes() const
{
    return planesOf<uint8_t>(m_frame);
}

KdPicturePlanes<const uint8_t> KdPictureFrame::constPlanes() const
{
    return planesOf<const uint8_t>(m_frame);
}
