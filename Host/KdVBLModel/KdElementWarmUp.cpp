#include <KdVBLModel/KdElementWarmUp.h>

#include <KdVBLModel/KdGst.h>

namespace {
constexpr const char* kNames[] = {"pulsesrc",  "audioconvert", "audioresample", "capsfilter",
                                  "volume",    "level",        "fakesink",      "appsrc",
                                  "avenc_aac", "voaacenc",     "mp4mux",        "filesink"};
}

void kdWarmUpElements()
{
    for (const char* name : kNames) {
        // A missing one is reported by whoever needs it.
        const KdGstPtr<GstElementFactory> factory(gst_element_factory_find(name));
        const KdGstPtr<GstPluginFeature> loaded(
            factory ? gst_plugin_feature_load(GST_PLUGIN_FEATURE(factory.get())) : nullptr);
    }
}
