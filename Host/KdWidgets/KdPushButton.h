#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QPushButton>

/** A push button in the skin's primary (filled) or secondary (outlined) style. Space and Return
 * press it. */
class KDWIDGETS_EXPORT KdPushButton : public QPushButton
{
    Q_OBJECT

public:
    /** Heights in pixels. */
    enum SizeKind : int
    {
        Size24 = 24,
        Size32 = 32
    };

    explicit KdPushButton(QWidget* parent = nullptr);

    static KdPushButton* CreatePrimaryButton(QWidget* parent, const QString& text = QString(),
                                             SizeKind size = Size24);
    static KdPushButton* CreateSecondaryButton(QWidget* parent, const QString& text = QString(),
                                               SizeKind size = Size24);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
