#include <KdVBLModel/KdElementWarmUp.h>

#include <KdVBLModel/KdGst.h>

#include <initializer_list>

namespace {

void load(std::initializer_list<const char*> names, const std::function<bool()>& isWanted)
{
    for (const char* name : names) {
        if (!isWanted()) {
            return;
        }
        // A missing one is reported by whoever needs it.
        const KdGstPtr<GstElementFactory> factory(gst_element_factory_find(name));
        const KdGstPtr<GstPluginFeature> loaded(
            factory ? gst_plugin_feature_load(GST_PLUGIN_FEATURE(factory.get())) : nullptr);
    }
}

} // namespace

void kdWarmUpElements(KdVBLMODEL::_KdDevType kind, const std::function<bool()>& isWanted)
{
    load({"capsfilter", "fakesink", "appsrc", "mp4mux", "filesink"}, isWanted);
    if (kind == KdVBLMODEL::kdtWebcam) {
        load({"pipewiresrc", "v4l2src", "queue", "jpegdec", "openh264enc", "h264parse"}, isWanted);
    } else {
        load({"pulsesrc", "audioconvert", "audioresample", "volume", "level", "avenc_aac",
              "voaacenc"},
             isWanted);
    }
}
