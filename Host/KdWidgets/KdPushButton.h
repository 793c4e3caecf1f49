#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QPushButton>

/**
 * A push button in the skin's primary (filled) or secondary (outlined) style. Space and Return
 * press it; in a dialog it is the default button only where it is told to be. GUI thread.
 */
class KDWIDGETS_EXPORT KdPushButton : public QPushButton
{
    Q_OBJECT

public:
    /** Heights in pixels. */
    enum SizeKind : int
    {
        Size24 = 24, ///< for a row of controls
        Size32 = 32  ///< for a button that stands alone
    };

    /**
     * A button without a style of its own; see the two below.
     * @param parent owns the button; may be null.
     */
    explicit KdPushButton(QWidget* parent = nullptr);

    /**
     * @param parent owns the button; may be null.
     * @param text on the button; an ampersand marks the key.
     * @param size fixed height of the button.
     * @return a filled button.
     */
    static KdPushButton* CreatePrimaryButton(QWidget* parent, const QString& text = QString(),
                                             SizeKind size = Size24);
    /**
     * @param parent owns the button; may be null.
     * @param text on the button; an ampersand marks the key.
     * @param size fixed height of the button.
     * @return an outlined button.
     */
    static KdPushButton* CreateSecondaryButton(QWidget* parent, const QString& text = QString(),
                                               SizeKind size = Size24);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
