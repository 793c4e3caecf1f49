#include "OptionStripFixture.h"

#include <KdWidgets/KdSkinManager.h>

using namespace KdVBLMODEL;

void OptionStripFixture::init()
{
    KdTestCase::init();
    m_asked.clear();
    m_window = std::make_unique<QWidget>();
    m_window->resize(260, 80);
    make(fcrsSquare, fcbmNone, false);
}

void OptionStripFixture::cleanup()
{
    m_window.reset();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    KdTestCase::cleanup();
}

void OptionStripFixture::make(_KdCaptureRecordShape shape, _KdCaptureRecordBackgroundMode mode,
                              bool flip)
{
    delete m_strip;
    m_strip = new Strip(m_window.get(), shape, mode, flip);
    m_strip->move(20, 20);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void OptionStripFixture::answer(bool accepted)
{
    m_strip->setActionHandleForShapeChange([this, accepted](_KdCaptureRecordShape shape) {
        m_asked.append(QStringLiteral("shape %1").arg(shape));
        return accepted;
    });
    m_strip->setActionHandleForBackgroundChange(
        [this, accepted](_KdCaptureRecordBackgroundMode mode) {
            m_asked.append(QStringLiteral("background %1").arg(mode));
            return accepted;
        });
    m_strip->setActionHandleForFlipChange([this, accepted](bool flip) {
        m_asked.append(QStringLiteral("flip %1").arg(flip));
        return accepted;
    });
}

KdToolButton* OptionStripFixture::button(const QString& name) const
{
    return m_strip->findChild<KdToolButton*>(name);
}

QString OptionStripFixture::states() const
{
    QString text;
    for (const QString& name : {kCircle, kSquare, kRemoval, kBlurred, kMirror}) {
        const QVariant value = state(name);
        if (!value.isValid()) {
            text += QLatin1Char('.');
        } else if (value == QStringLiteral("checked")) {
            text += QLatin1Char('+');
        } else {
            text += value == QStringLiteral("unchecked") ? QLatin1Char('-') : QLatin1Char('!');
        }
    }
    return text;
}
