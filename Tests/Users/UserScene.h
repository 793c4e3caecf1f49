#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class QWidget;

/** Something that a user meets on the screen. */
struct UserScene
{
    using Look = std::function<void(QWidget& window)>;

    enum Kind : int
    {
        Window,  ///< stays open until it is closed
        Passing, ///< comes and goes with what it tells: a message, a toast, a tip, an open list
        Page     ///< part of a host's window, which has the frame and the size
    };

    QByteArray name;
    Kind kind;
    /** Brings it to the screen, looks at the window that has the focus, and takes it away. */
    std::function<void(const Look& look)> show;
};

using UserScenes = QVector<UserScene>;

/** @return the windows that a user sees now. */
QVector<QWidget*> windowsOnScreen();
