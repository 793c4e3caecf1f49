#include "VideoSettingsShots.h"

#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KVideoSettings.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdFramelessDialog.h>

#include <QVBoxLayout>

bool takeVideoSettingsShots(const Shot& shot)
{
    KdFramelessDialog dialog;
    dialog.SetTitleName(QStringLiteral("Export"));
    dialog.setButtonBarVisible(false);
    auto* const content = new QWidget(&dialog);
    auto* const page = new KVideoSettings(content);
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(32, 12, 32, 32);
    layout->addWidget(page);
    dialog.setContentWidget(content);
    dialog.setFixedSize(480, 400);
    page->loadData({0x34363243, 29.97F, 1, 8});
    dialog.show();
    bool ok = shot.take(&dialog, QStringLiteral("video-settings"));

    auto* const rates = page->findChild<KComboboxExt*>(QStringLiteral("KVideoSettings_FrameRate"));
    rates->combobox()->showPopup();
    Shot::letPass(200);
    ok = shot.take(&dialog, QStringLiteral("video-settings-list")) && ok;
    rates->combobox()->hidePopup();
    return ok;
}
