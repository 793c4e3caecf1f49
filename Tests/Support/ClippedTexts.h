#pragma once

#include <QStringList>

class QWidget;

namespace KdTest {

/**
 * @return the texts of visible labels, buttons and combo boxes in a window that have less room than
 * they need, each with where it stands. A choice counts also while another one is selected.
 */
QStringList clippedTexts(const QWidget& window);

} // namespace KdTest
