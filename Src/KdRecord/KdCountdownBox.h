#pragma once

class KdDoubleSpinBox;
class QWidget;

/** The field for the seconds before a take. GUI thread. */
namespace KdCountdownBox {

constexpr int kMostSeconds = 9;
/** What an emptied field counts as. */
constexpr int kDefaultSeconds = 3;

/** @return a field of whole seconds; the parent's. */
KdDoubleSpinBox* create(QWidget* parent);

/** @return the seconds as they stand in the field, also while they are being edited. */
int seconds(const KdDoubleSpinBox& box);

} // namespace KdCountdownBox
