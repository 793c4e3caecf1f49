#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QWidget;

namespace KdSkin {

/** The numbers under which widgets ask for a colour of the skin. */
enum SkinColor : int
{
    Window = 40,
    Surface = 41,
    Stroke = 42,
    Field = 43,
    Text = 44,
    TextQuiet = 45,
    Accent = 46,
    OnAccent = 47,
    Record = 48,
    Good = 49,
    Warn = 50
};

/**
 * Styles widgets by key. A key is an area, a slash and a name ("CommonView/KdCountCtrl"); its sheet
 * refers to colours by the token names of the skin's palette. GUI thread.
 */
class KDWIDGETS_EXPORT KdSkinManager : public QObject
{
    Q_OBJECT

public:
    /** Made, and the application styled in the dark skin, with the kit's first widget. */
    static KdSkinManager* instance();

    /** @return "dark" and "light". */
    QStringList skins() const;
    QString skin() const;
    /** Styles the application and every widget styled before anew. @return false for an unknown
     * name. */
    bool setSkin(const QString& name);

    /**
     * Gives widget the sheet of that key, now and at every change of skin until it is destroyed or
     * styled by another key. An unknown key leaves the widget as it is and is logged.
     * @param flags 0
     */
    bool applyStyleSheet(QWidget* widget, const QString& key, int flags);
    /** @return the sheet of a key with the current skin's colours, empty for an unknown key. */
    QString styleSheet(const QString& key) const;

    /** @return a colour of the current skin; invalid for an unknown token ("window", "text-quiet",
     * ...). */
    QColor color(const QString& token) const;
    QColor color(SkinColor number) const;

    /** Sets the property "checkState" to "checked" or "unchecked" and re-polishes the widget. */
    static void setCheckState(QWidget* widget, bool checked);
    /** Re-applies the style after a dynamic property changed. */
    static void repolish(QWidget* widget);

Q_SIGNALS:
    void skinChanged();

private:
    KdSkinManager();
    ~KdSkinManager() override;
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace KdSkin
