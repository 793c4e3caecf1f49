#include <KdVBLModel/KdVideoServerWatch.h>

#include <KdVBLModel/KdGst.h>

/** There is no such server here. */
class KdVideoServerWatch::Private
{
public:
    Private(GMainContext* context, Changed tell)
        : changed(std::move(tell)), once(g_idle_source_new())
    {
        g_source_set_callback(once, &Private::onFirst, this, nullptr);
        g_source_attach(once, context);
    }
    ~Private()
    {
        g_source_destroy(once);
        g_source_unref(once);
    }

private:
    static gboolean onFirst(gpointer self)
    {
        static_cast<Private*>(self)->changed(-1);
        return G_SOURCE_REMOVE;
    }

    Changed changed;
    GSource* once;
};

KdVideoServerWatch::KdVideoServerWatch(GMainContext* context, Changed changed)
    : d(std::make_unique<Private>(context, std::move(changed)))
{
}

KdVideoServerWatch::~KdVideoServerWatch() = default;
