#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QToolButton>

/**
 * An icon button. Its tool tip is plain text and, where it has no text of its own, its accessible
 * name; with the property "WITH_SHORTCUT" a key text in brackets at the end of the tip is shown in
 * a quiet colour. Space and Return press it. The property "round", set before it is shown, gives a
 * button of 36 pixels a round focus ring. GUI thread.
 */
class KDWIDGETS_EXPORT KdToolButton : public QToolButton
{
    Q_OBJECT
    Q_PROPERTY(QString images READ images WRITE setImages)
    Q_PROPERTY(QString checkedImages READ checkedImages WRITE setCheckedImages)

public:
    /** @param parent owns the button; may be null. */
    explicit KdToolButton(QWidget* parent = nullptr);

    /**
     * @param parent owns the button; may be null.
     * @param objectName of the button; may be empty.
     * @param styleKey applied through the skin manager when not empty.
     * @return the button; never null.
     */
    static KdToolButton* CreateToolButton(QWidget* parent, const QString& objectName,
                                          const QString& styleKey = QString());

    /**
     * The four images of an icon for the button's states, .svg or .png. A missing one for pressing
     * is that of the button before; any other is made from the normal one.
     */
    struct IconFiles
    {
        QString normal;   ///< at rest; empty: no icon
        QString hover;    ///< the mouse is over it
        QString pressed;  ///< it is being pressed
        QString disabled; ///< it cannot be pressed
    };
    /**
     * The icon size becomes that of the normal image, where it can be read.
     * @param unchecked shown as a rule.
     * @param checked shown while the button is checked; without a normal image the others are.
     */
    void setIconFiles(const IconFiles& unchecked, const IconFiles& checked = IconFiles());

    /**
     * @param set name of the icon.
     * @return ":/SVGResourceFile/<set>_normal.svg" and its three siblings, whether they exist or
     * not.
     */
    static IconFiles svgIconSet(const QString& set);

    /**
     * Icon files as a style sheet names them ("qproperty-images", "qproperty-checkedImages"), drawn
     * above the button's ground in every state, in the middle, in the icon size. Not by the sheet's
     * "image", for which the style reads the whole drawing anew for every button and every state.
     * @param files those for the states of IconFiles in their order, separated by blanks; "-" and
     * what is left out at the end are missing ones.
     */
    void setImages(const QString& files);
    /** @param files as above, shown while the button is checked. */
    void setCheckedImages(const QString& files);
    /** @return what was set. */
    QString images() const { return m_sImages; }
    /** @return what was set. */
    QString checkedImages() const { return m_sCheckedImages; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Icon
    {
        IconFiles unchecked;
        IconFiles checked;
    };

    const IconFiles& currentFiles(const Icon& icon) const;
    QString currentFile(const IconFiles& files) const;
    QPixmap currentPixmap(const Icon& icon) const;
    QString tip() const;
    void adoptToolTip();

    Icon m_icon;
    Icon m_sheetIcon;
    QString m_sImages;
    QString m_sCheckedImages;
    QString m_sAdoptedName;
};
