#include <KdWidgets/KdButton.h>

KdButton::KdButton(QWidget* parent) : KdToolButton(parent) {}
