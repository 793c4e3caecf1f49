#pragma once

#include <QMetaType>
#include <QString>

#include <functional>
#include <type_traits>
#include <utility>

/**
 * A text on the screen that can be asked for again when the language has changed: what shows one
 * follows the language while it is open. Made of a function it is what that returns, translated
 * anew each time; made of a QString it stays as it is. GUI thread.
 */
class KdLiveText
{
public:
    /** An empty text. */
    KdLiveText() = default;

    /** @param text shown in every language. */
    KdLiveText(const QString& text) // NOLINT(google-explicit-constructor): a text is a live text
        : m_source([text] { return text; })
    {
    }

    /**
     * @param source gives the text in the present language, such as [] { return tr("Close"); }. It
     * is called as long as the text is shown, so it captures by value what goes earlier.
     */
    template <typename Source,
              typename = std::enable_if_t<std::is_invocable_r_v<QString, const Source&>>>
    KdLiveText(Source source) // NOLINT(google-explicit-constructor): as above
        : m_source(std::move(source))
    {
    }

    /** @return the text in the present language. */
    QString now() const { return m_source ? m_source() : QString(); }

private:
    std::function<QString()> m_source;
};

Q_DECLARE_METATYPE(KdLiveText)
