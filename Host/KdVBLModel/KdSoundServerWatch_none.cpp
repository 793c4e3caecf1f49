#include <KdVBLModel/KdSoundServerWatch.h>

#include <glib.h>

class KdSoundServerWatch::Private
{
public:
    Private(GMainContext* context, Changed changed)
        : m_changed(std::move(changed)), m_once(g_idle_source_new())
    {
        g_source_set_callback(m_once, &Private::onIdle, this, nullptr);
        g_source_attach(m_once, context);
    }

    ~Private()
    {
        g_source_destroy(m_once);
        g_source_unref(m_once);
    }

private:
    static gboolean onIdle(gpointer self)
    {
        static_cast<Private*>(self)->m_changed(false);
        return G_SOURCE_REMOVE;
    }

    Changed m_changed;
    GSource* m_once;
};

KdSoundServerWatch::KdSoundServerWatch(GMainContext* context, Changed changed)
    : d(std::make_unique<Private>(context, std::move(changed)))
{
}

KdSoundServerWatch::~KdSoundServerWatch() = default;
