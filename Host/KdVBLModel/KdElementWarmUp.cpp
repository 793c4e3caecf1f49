#include <KdVBLModel/KdElementWarmUp.h>

#include <KdVBLModel/KdGst.h>

#include <initializer_list>

namespace {

void load(std::initializer_list<const char*> names)
{
    for (const char* name : names) {
        // A missing one is reported by whoever needs it.
        const KdGstPtr<GstElementFactory> factory(gst_element_factory_find(name));
        const KdGstPtr<GstPluginFeature> loaded(
            factory ? gst_plugin_feature_load(GST_PLUGIN_FEATURE(factory.get())) : nullptr);
    }
}

} // namespace

void kdWarmUpElements(KdVBLMODEL::_KdDevType kind)
{
    load({"capsfilter", "fakesink", "appsrc", "mp4mux", "filesink"});
    if (kind == KdVBLMODEL::kdtWebcam) {
        load({"pipewiresrc", "v4l2src", "queue", "jpegdec", "openh264enc", "h264parse"});
    } else {
        load({"pulsesrc", "audioconvert", "audioresample", "volume", "level", "avenc_aac",
              "voaacenc"});
    }
}
