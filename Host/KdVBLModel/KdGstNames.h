#pragma once

// The names of GLib's and GStreamer's types, for headers whose users need not know those libraries.
// NOLINTBEGIN(modernize-use-using,bugprone-reserved-identifier)
typedef struct _GMainContext GMainContext;
typedef struct _GstBuffer GstBuffer;
typedef struct _GstCaps GstCaps;
typedef struct _GstDevice GstDevice;
typedef struct _GstElement GstElement;
typedef struct _GstStructure GstStructure;
// NOLINTEND(modernize-use-using,bugprone-reserved-identifier)
