#include "DialogStage.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

void DialogStage::press(const QString& name)
{
    auto* const button = m_dialog->findChild<QWidget*>(name);
    Shot::waitFor([button] { return button && button->isVisible(); }, "a button to press");
    QTest::mouseClick(button, Qt::LeftButton);
}

void DialogStage::shootWhenShown(const Shot& shot, const QString& windowName, const QString& name)
{
    m_isAwaited = true;
    auto* const poll = new QTimer(m_dialog);
    QObject::connect(poll, &QTimer::timeout, poll, [this, poll, &shot, windowName, name] {
        QWidget* const window = visibleWindow(windowName);
        if (!window || !QTest::qWaitForWindowExposed(window->window())) {
            return;
        }
        poll->stop();
        Shot::letPass(200);
        poll->deleteLater();
        m_ok = shot.take(m_dialog, name) && m_ok;
        m_isAwaited = false;
        window->close();
    });
    poll->start(50);
}

void DialogStage::waitForShot()
{
    m_ok = Shot::waitFor([this] { return !m_isAwaited; }, "a window to take") && m_ok;
}

QWidget* DialogStage::visibleWindow(const QString& name)
{
    const QWidgetList all = QApplication::allWidgets();
    for (QWidget* widget : all) {
        if (widget->objectName() == name && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

bool DialogStage::waitForWindow(const QString& name)
{
    return Shot::waitFor([&name] { return visibleWindow(name) != nullptr; }, "a window");
}
