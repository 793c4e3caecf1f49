#pragma once

#include "ClipFeeder.h"

#include <Support/KdTestCase.h>

#include <QDir>
#include <QSize>
#include <QVector>

/** What the tests of clips have in common: formats, pictures to be known again, and a place. */
namespace WebcamTakeTest {

/** How far a flash and its beep may be apart, in seconds. */
constexpr double kMostApart = 0.040;
/** By how much the lengths of the two tracks may differ, in seconds. */
constexpr double kMostUnequal = 0.025;

/** @return a format of that size with, if at all, sound of 48 kHz. */
KdWebcamTakeFormat clipFormat(bool hasSound, QSize size = QSize(320, 180));

/** @return the values in one line, for a message. */
QString text(const QVector<double>& values);
/** @return the value that is the farthest from 0, without its sign. */
double farthest(const QVector<double>& offsets);

/** @return a pixel of a decoded picture; plane 0 is brightness. */
int pixel(const QByteArray& picture, QSize size, int plane, int x, int y);
/** @return the pixel of a picture with something different in each of its quarters. */
int quarters(QSize size, int plane, int x, int y);
/** @return that picture. */
KdGstBufferPtr colourful(QSize size);

} // namespace WebcamTakeTest

/** Base of the tests of takes of pictures and sound, from what comes in to what a player makes of
 * the file. */
class WebcamTakeFixture : public KdTestCase
{
    Q_OBJECT

protected:
    /** Of a take that is not there yet. */
    QString path() const { return temporaryPath(QStringLiteral("take.mp4")); }
    /** @return the names of all files beside the take, and its own. */
    QStringList files() const
    {
        return QDir(temporaryPath(QString())).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

protected Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
};
