#include <KdVBLModel/KdVideoServerWatch.h>

#include <KdVBLModel/KdGst.h>

#include <QFile>

#include <glib-unix.h>

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr guint kRetryMs = 500;

QByteArray socketPath()
{
    QByteArray name = qEnvironmentVariableIsEmpty("PIPEWIRE_REMOTE")
                          ? QByteArrayLiteral("pipewire-0")
                          : qgetenv("PIPEWIRE_REMOTE");
    if (name.startsWith('/')) {
        return name;
    }
    for (const char* folder : {"PIPEWIRE_RUNTIME_DIR", "XDG_RUNTIME_DIR", "USERPROFILE"}) {
        if (!qEnvironmentVariableIsEmpty(folder)) {
            return qgetenv(folder) + '/' + name;
        }
    }
    return QByteArrayLiteral("/run/pipewire/") + name;
}

/** @return a connected socket, or -1. */
int connectToServer()
{
    const QByteArray path = socketPath();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof(address.sun_path)) {
        return -1;
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (connection >= 0 &&
        ::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
        ::close(connection);
        return -1;
    }
    return connection;
}

} // namespace

class KdVideoServerWatch::Private
{
public:
    Private(GMainContext* runs, Changed tell) : context(runs), changed(std::move(tell))
    {
        waitFor(g_idle_source_new(), G_SOURCE_FUNC(&Private::onFirst));
    }
    ~Private() { endWaiting(); }

private:
    static gboolean onFirst(gpointer self)
    {
        static_cast<Private*>(self)->tryToConnect(true);
        return G_SOURCE_REMOVE;
    }
    static gboolean onRetry(gpointer self)
    {
        static_cast<Private*>(self)->tryToConnect(false);
        return G_SOURCE_CONTINUE;
    }
    static gboolean onLost(gint, GIOCondition, gpointer self)
    {
        static_cast<Private*>(self)->lose();
        return G_SOURCE_REMOVE;
    }

    void tryToConnect(bool isFirst);
    void lose();
    void waitFor(GSource* next, GSourceFunc callback);
    void endWaiting();

    GMainContext* context;
    Changed changed;
    GSource* waiting = nullptr; ///< for the server's end, or for the next attempt
};

// The socket is not closed when the server has gone: its number would be given to the next one, and
// the provider takes equal numbers for one connection.
void KdVideoServerWatch::Private::tryToConnect(bool isFirst)
{
    const int connection = connectToServer();
    if (connection >= 0) {
        waitFor(g_unix_fd_source_new(connection, static_cast<GIOCondition>(G_IO_HUP | G_IO_ERR)),
                G_SOURCE_FUNC(&Private::onLost));
    } else if (isFirst) {
        waitFor(g_timeout_source_new(kRetryMs), G_SOURCE_FUNC(&Private::onRetry));
    }
    if (connection >= 0 || isFirst) {
        changed(connection);
    }
}

void KdVideoServerWatch::Private::lose()
{
    waitFor(g_timeout_source_new(kRetryMs), G_SOURCE_FUNC(&Private::onRetry));
    changed(-1);
}

void KdVideoServerWatch::Private::waitFor(GSource* next, GSourceFunc callback)
{
    endWaiting();
    waiting = next;
    g_source_set_callback(waiting, callback, this, nullptr);
    g_source_attach(waiting, context);
}

void KdVideoServerWatch::Private::endWaiting()
{
    if (waiting) {
        g_source_destroy(waiting);
        g_source_unref(waiting);
        waiting = nullptr;
    }
}

KdVideoServerWatch::KdVideoServerWatch(GMainContext* context, Changed changed)
    : d(std::make_unique<Private>(context, std::move(changed)))
{
}

KdVideoServerWatch::~KdVideoServerWatch() = default;
