#pragma once

#include "WebcamRecordFixture.h"

#include <KdRecord/KdWebcamRecordView.h>

#include <QJsonObject>

#include <functional>

/** What the tests of the webcam dialog have in common beyond the panel's: the dialog. */
class WebcamViewFixture : public WebcamRecordFixture
{
    Q_OBJECT

protected:
    void makeView(QWidget* parent = nullptr);
    /** On the screen, without a loop of its own. */
    void showView(QWidget* parent = nullptr);
    /** Lets the dialog run as hosts do; step happens in it, and the dialog is closed at its end. */
    int runModal(const std::function<void()>& step);
    /** @return the object that a text of JSON describes. */
    static QJsonObject object(const QVariant& text);

    QPointer<KdWebcamRecordView> view;
};
