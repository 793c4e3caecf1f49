#include <KdVBLModel/KdSoundServerWatch.h>

#include <pulse/glib-mainloop.h>
#include <pulse/pulseaudio.h>

#include <glib.h>

#include <optional>

namespace {
constexpr guint kRetryMs = 1000;
}

/** One idle connection to the server; when it breaks, a new one is tried every second. */
class KdSoundServerWatch::Private
{
public:
    Private(GMainContext* context, Changed changed)
        : m_changed(std::move(changed))
        , m_mainContext(context)
        , m_loop(pa_glib_mainloop_new(context))
    {
        scheduleConnect(0);
    }

    ~Private()
    {
        cancelConnect();
        disconnect();
        pa_glib_mainloop_free(m_loop);
    }

private:
    void scheduleConnect(guint delayMs)
    {
        cancelConnect();
        m_timer = g_timeout_source_new(delayMs);
        g_source_set_callback(m_timer, &Private::onTimer, this, nullptr);
        g_source_attach(m_timer, m_mainContext);
    }

    void cancelConnect()
    {
        if (m_timer) {
            g_source_destroy(m_timer);
            g_source_unref(m_timer);
            m_timer = nullptr;
        }
    }

    static gboolean onTimer(gpointer self)
    {
        static_cast<Private*>(self)->connect();
        return G_SOURCE_REMOVE;
    }

    void connect()
    {
        disconnect();
        m_server = pa_context_new(pa_glib_mainloop_get_api(m_loop), "KdRecord device list");
        pa_context_set_state_callback(m_server, &Private::onState, this);
        if (pa_context_connect(m_server, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
            connectionBroke();
        }
    }

    void disconnect()
    {
        if (m_server) {
            pa_context_set_state_callback(m_server, nullptr, nullptr);
            pa_context_disconnect(m_server);
            pa_context_unref(m_server);
            m_server = nullptr;
        }
    }

    static void onState(pa_context* server, void* self)
    {
        const pa_context_state_t state = pa_context_get_state(server);
        if (state == PA_CONTEXT_READY) {
            static_cast<Private*>(self)->tell(true);
        } else if (!PA_CONTEXT_IS_GOOD(state)) {
            static_cast<Private*>(self)->connectionBroke();
        }
    }

    void connectionBroke()
    {
        scheduleConnect(kRetryMs);
        tell(false);
    }

    void tell(bool isRunning)
    {
        if (m_isRunning != isRunning) {
            m_isRunning = isRunning;
            m_changed(isRunning);
        }
    }

    Changed m_changed;
    GMainContext* m_mainContext;
    pa_glib_mainloop* m_loop;
    GSource* m_timer = nullptr;
    pa_context* m_server = nullptr;
    std::optional<bool> m_isRunning;
};

KdSoundServerWatch::KdSoundServerWatch(GMainContext* context, Changed changed)
    : d(std::make_unique<Private>(context, std::move(changed)))
{
}

KdSoundServerWatch::~KdSoundServerWatch() = default;
