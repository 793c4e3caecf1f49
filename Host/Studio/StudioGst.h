#pragma once

#include <QImage>
#include <QString>

#include <gst/gst.h>

#include <memory>

/** Owning pointers and small services for what Studio does with GStreamer. Any thread. */
namespace StudioGst {

struct ObjectUnref
{
    void operator()(gpointer object) const { gst_object_unref(object); }
};
struct SampleUnref
{
    void operator()(GstSample* sample) const { gst_sample_unref(sample); }
};
struct MessageUnref
{
    void operator()(GstMessage* message) const { gst_message_unref(message); }
};
/** Ends the pipeline before the last reference goes, as GStreamer demands. */
struct PipelineEnd
{
    void operator()(GstElement* pipeline) const
    {
        gst_element_set_state(pipeline, GST_STATE_NULL);
        gst_object_unref(pipeline);
    }
};

using Pipeline = std::unique_ptr<GstElement, PipelineEnd>;
using Bus = std::unique_ptr<GstBus, ObjectUnref>;
using Sample = std::unique_ptr<GstSample, SampleUnref>;
using Message = std::unique_ptr<GstMessage, MessageUnref>;

/** Starts GStreamer on first use. @return false when it cannot be started. */
bool start();

/** @return the file's address for GStreamer. */
QString fileUri(const QString& path);

/** @return the words of an error message. */
QString errorText(GstMessage* message);

/** @return the words of an error that the pipeline has met; empty: none so far */
QString busError(GstElement* pipeline);

/**
 * Makes an element in the pipeline, which owns it.
 * @return null when there is no such element; missing then names it
 */
GstElement* add(GstElement* pipeline, const char* factory, QString* missing);

/** @return what a sink has to ask for so that toImage() can read it; the caller unrefs it. */
GstCaps* pictureCaps();

/**
 * @return the picture in a sample of pictureCaps(); null for any other. It holds the sample's
 * memory: whoever keeps it for long should copy it.
 */
QImage toImage(GstSample* sample);

} // namespace StudioGst
