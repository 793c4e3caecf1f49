#pragma once

#include <QImage>
#include <QSize>
#include <QString>

class StudioWorkGate;

/**
 * Decodes one picture of a clip. Blocks: not for the GUI thread.
 * @param milliseconds where in the clip; the nearest picture that can be had quickly is taken
 * @param bound the picture is made smaller to fit, never larger
 * @param gate passed several times a second
 * @return null when there is no picture, or the gate says to end
 */
QImage readPicture(const QString& path, qint64 milliseconds, const QSize& bound,
                   StudioWorkGate& gate);
