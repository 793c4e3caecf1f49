#include <Studio/StudioGst.h>

#include <QUrl>

namespace StudioGst {

bool start()
{
    static const bool started = gst_init_check(nullptr, nullptr, nullptr) != FALSE;
    return started;
}

QString fileUri(const QString& path)
{
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
}

QString errorText(GstMessage* message)
{
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    QString text = error ? QString::fromUtf8(error->message) : QString();
    g_clear_error(&error);
    return text;
}

GstElement* add(GstElement* pipeline, const char* factory, QString* missing)
{
    GstElement* const element = gst_element_factory_make(factory, nullptr);
    if (!element) {
        *missing = QString::fromLatin1(factory);
        return nullptr;
    }
    gst_bin_add(GST_BIN(pipeline), element);
    return element;
}

} // namespace StudioGst
