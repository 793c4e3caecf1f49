#pragma once

#include <gst/gst.h>

#include <memory>

/** Owners of GStreamer references. They take a full reference; wrap a floating one in kdSink(). */

struct KdGstObjectUnref
{
    void operator()(gpointer object) const { gst_object_unref(object); }
};

struct KdGstMiniObjectUnref
{
    template <typename T>
    void operator()(T* object) const
    {
        gst_mini_object_unref(GST_MINI_OBJECT_CAST(object));
    }
};

struct KdGFree
{
    void operator()(gpointer memory) const { g_free(memory); }
};

template <typename T>
using KdGstPtr = std::unique_ptr<T, KdGstObjectUnref>;

using KdGstCapsPtr = std::unique_ptr<GstCaps, KdGstMiniObjectUnref>;
using KdGstBufferPtr = std::unique_ptr<GstBuffer, KdGstMiniObjectUnref>;
using KdGCharPtr = std::unique_ptr<gchar, KdGFree>;

/** @return an owner of a further reference; null for null. */
template <typename T>
KdGstPtr<T> kdRef(T* object)
{
    return KdGstPtr<T>(object ? static_cast<T*>(gst_object_ref(object)) : nullptr);
}

/** @return the owner of a floating reference, which is made a full one; null for null. */
template <typename T>
KdGstPtr<T> kdSink(T* object)
{
    return KdGstPtr<T>(object ? static_cast<T*>(gst_object_ref_sink(object)) : nullptr);
}
