#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QWidget;

/** How the host's widgets look. */
namespace KdSkin {

/** The numbers under which widgets ask for a colour of the skin. */
enum SkinColor : int
{
    Window = 40,    ///< the ground of windows
    Surface = 41,   ///< cards, bubbles and lists above the ground
    Stroke = 42,    ///< borders and separators
    Field = 43,     ///< the ground of fields
    Text = 44,      ///< what is read
    TextQuiet = 45, ///< captions and hints
    Accent = 46,    ///< what is chosen or has the focus
    OnAccent = 47,  ///< text on Accent
    Record = 48,    ///< recording; the meter's red
    Good = 49,      ///< the meter's green
    Warn = 50       ///< warnings; the meter's amber
};

/**
 * Styles widgets by key. A key is an area, a slash and a name ("CommonView/KdCountCtrl"); its sheet
 * refers to colours by the token names of the skin's palette. Needs a QApplication. GUI thread.
 */
class KDWIDGETS_EXPORT KdSkinManager : public QObject
{
    Q_OBJECT

public:
    /**
     * @return the manager; never null. Made, and the application styled in the dark skin, with the
     * kit's first widget.
     */
    static KdSkinManager* instance();

    /** @return "dark" and "light". */
    QStringList skins() const;
    /** @return the name of the current skin. */
    QString skin() const;
    /**
     * Styles the application and every widget styled before anew, then emits skinChanged().
     * @param name one of skins().
     * @return false for an unknown name, which changes nothing and is logged.
     */
    bool setSkin(const QString& name);

    /**
     * Gives a widget the sheet of a key, now and at every change of skin until it is destroyed or
     * styled by another key.
     * @param widget stays the caller's; null is refused.
     * @param key of the sheet; an unknown one leaves the widget as it is.
     * @param flags 0; ignored
     * @return whether the widget has the sheet; a refusal is logged.
     */
    bool applyStyleSheet(QWidget* widget, const QString& key, int flags);
    /**
     * @param key of the sheet.
     * @return the sheet with the current skin's colours, empty for an unknown key.
     */
    QString styleSheet(const QString& key) const;

    /**
     * @param token "window", "text-quiet", ...
     * @return a colour of the current skin; invalid for an unknown token.
     */
    QColor color(const QString& token) const;
    /**
     * @param number of the colour.
     * @return a colour of the current skin; invalid for an unknown number.
     */
    QColor color(SkinColor number) const;

    /**
     * Sets the property "checkState" to "checked" or "unchecked" and re-polishes the widget, so
     * that its sheet can tell the two.
     * @param widget not null.
     * @param checked which of the two.
     */
    static void setCheckState(QWidget* widget, bool checked);
    /**
     * Re-applies the style after a dynamic property changed.
     * @param widget not null.
     */
    static void repolish(QWidget* widget);

Q_SIGNALS:
    /** Everything has the colours of another skin; whoever paints itself asks for them again. */
    void skinChanged();

private:
    KdSkinManager();
    ~KdSkinManager() override;
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace KdSkin
