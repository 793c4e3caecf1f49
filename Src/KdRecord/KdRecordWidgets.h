#pragma once

#include <QCoreApplication>
#include <QSize>
#include <QString>

class KdButton;
class KdLabel;
class KdToolButton;
class QWidget;

/** Widgets that the recording panels have in common. Each belongs to its parent. GUI thread. */
class KdRecordWidgets
{
    Q_DECLARE_TR_FUNCTIONS(KdRecordWidgets)

public:
    /** A button that shows only during a take, and keeps its place otherwise. */
    static KdButton* makeTakeButton(QWidget* parent, const QString& name);
    static KdButton* makeReRecordButton(QWidget* parent, const QString& name);
    static KdButton* makePauseButton(QWidget* parent, const QString& name);
    /** A button in the skin's style of "BasicWidget/" and its name. */
    static KdToolButton* makeStyledButton(QWidget* parent, const QString& name, const QSize& size);
    static KdLabel* makeCaption(QWidget* parent, QWidget* buddy = nullptr);
    /** The elapsed time, in large figures. */
    static KdLabel* makeTimeLabel(QWidget* parent, const QString& name);

    static void setTextAndName(KdLabel* caption, QWidget* control, const QString& text);
    static void setTipAndName(QWidget* control, const QString& text);

    /** What a press would do now: by the button's checked state and the host's shortcut. */
    static void showStartTip(KdToolButton* start);
    static void showStopTip(KdToolButton* stop);
    static void showPauseTip(KdToolButton* pause);
};
