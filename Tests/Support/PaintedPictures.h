#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QStringList>
#include <QVector>

class QWidget;

namespace KdTest {

/** A picture as a window paints it: an icon, an image of a skin, a buffer that was painted before.
 */
struct PaintedPicture
{
    QRectF place;          ///< in the window
    QSizeF pixels;         ///< that it takes of the screen
    QImage picture;        ///< the part of it that is shown
    bool isSmooth = false; ///< resampled evenly where its pixels are not the screen's

    /** @return whether any of it can be seen. */
    bool isVisible() const;
    /** @return whether it has fewer pixels than it takes; a fraction of one does not count. */
    bool isEnlarged() const;
    /** @return whether it has other pixels than it takes, and some are left out or doubled. */
    bool isTorn() const;
    /** @return whether its pixels were made of fewer before: nothing of its outline is sharper than
     * in a picture that was enlarged to twice its size. Tells of pictures with transparent parts
     * that were drawn for 200 %. */
    bool isBlurred() const;
};

/**
 * @param ratio pixels of the screen for each unit.
 * @return what a window paints on such a screen, itself and its children, but letters, lines and
 * areas, which are as sharp as the screen.
 */
QVector<PaintedPicture> paintedPictures(QWidget& window, double ratio);

/** @return those of them that a user would see blurred or torn, on the screen that the window is
 * on. */
QStringList coarsePictures(QWidget& window);

} // namespace KdTest
