#pragma once

#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdWidgets/KdToolButton.h>

#include <Support/KdTestCase.h>

#include <QPointer>

#include <memory>

/** Base of the tests of the strip of options: a square one without an effect, in a window. */
class OptionStripFixture : public KdTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    using Strip = KRecordPreViewSettingRadiusWidget;

    static inline const QString kCircle = QStringLiteral("KRecorder_Circle_RoundBtn");
    static inline const QString kSquare = QStringLiteral("KRecorder_Square_RoundBtn");
    static inline const QString kRemoval = QStringLiteral("KRecorder_Removal_RoundBtn");
    static inline const QString kBlurred = QStringLiteral("KRecorder_Blurred_RoundBtn");
    static inline const QString kMirror = QStringLiteral("KRecorder_Mirror_RoundBtn");

    /** A strip in place of the one before, on the screen. */
    void make(KdVBLMODEL::_KdCaptureRecordShape shape,
              KdVBLMODEL::_KdCaptureRecordBackgroundMode mode, bool flip);
    /** Sets all three callbacks; what they are asked is kept in its order. */
    void answer(bool accepted);
    KdToolButton* button(const QString& name) const;
    void click(const QString& name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    QVariant state(const QString& name) const { return button(name)->property("checkState"); }
    /** Circle, square, removal, blurred, mirror: "+" checked, "-" unchecked, "." no state at all.
     */
    QString states() const;

    std::unique_ptr<QWidget> m_window;
    QPointer<Strip> m_strip;
    QStringList m_asked;
};
