#include <KdWidgets/KOldMessageDialog.h>

#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdWindowWatch.h>
#include <KdWidgets/KdWrapLabel.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

constexpr int kTextWidth = 368;
constexpr int kHighestText = 320;
constexpr int kMargin = 16;

using Button = QDialogButtonBox::StandardButton;

QString buttonName(Button button)
{
    switch (button) {
    case QDialogButtonBox::Yes:
        return QStringLiteral("Yes");
    case QDialogButtonBox::No:
        return QStringLiteral("No");
    default:
        return QStringLiteral("Ok");
    }
}

QString buttonText(Button button)
{
    switch (button) {
    case QDialogButtonBox::Yes:
        return KOldMessageDialog::tr("Yes");
    case QDialogButtonBox::No:
        return KOldMessageDialog::tr("No");
    default:
        return KOldMessageDialog::tr("OK");
    }
}

/** The buttons stay in reach however long a text from outside is. */
QWidget* scrolled(QWidget* text, int height, QWidget* parent)
{
    auto* area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(text);
    area->setFixedSize(kTextWidth + area->verticalScrollBar()->sizeHint().width(), height);
    return area;
}

} // namespace

KOldMessageDialog::KOldMessageDialog(const QString& text, QWidget* parent,
                                     QDialogButtonBox::StandardButtons buttons, Button safeAnswer,
                                     const QString& title)
    : KdFramelessDialog(parent), m_sText(text), m_answer(safeAnswer)
{
    setObjectName(QStringLiteral("KOldMessageDialog"));
    SetTitleName(title.isEmpty() ? QGuiApplication::applicationDisplayName() : title);
    setAccessibleDescription(text);
    setContentWidget(createText());
    for (const Button button :
         {QDialogButtonBox::No, QDialogButtonBox::Yes, QDialogButtonBox::Ok}) {
        if (buttons & button) {
            addButton(button, button == safeAnswer);
        }
    }
}

Button KOldMessageDialog::Infomation(const QString& text, QWidget* parent,
                                     QDialogButtonBox::StandardButtons buttons,
                                     const QString& title)
{
    const auto known =
        buttons & (QDialogButtonBox::Ok | QDialogButtonBox::Yes | QDialogButtonBox::No);
    const auto shown = known ? known : QDialogButtonBox::Ok;
    return ask(new KOldMessageDialog(text, parent, shown, QDialogButtonBox::Ok, title),
               QDialogButtonBox::Ok);
}

Button KOldMessageDialog::Question_YesNo(const QString& text, QWidget* parent, Button safeAnswer,
                                         const QString& title)
{
    const auto buttons = QDialogButtonBox::Yes | QDialogButtonBox::No;
    return ask(new KOldMessageDialog(text, parent, buttons, safeAnswer, title), safeAnswer);
}

QString KOldMessageDialog::text() const
{
    return m_sText;
}

void KOldMessageDialog::showEvent(QShowEvent* event)
{
    KdFramelessDialog::showEvent(event);
    // As Qt does for its own messages.
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

Button KOldMessageDialog::ask(KOldMessageDialog* dialog, Button safeAnswer)
{
    // On the heap: the parent may be destroyed while the question stands, and the dialog goes with
    // it.
    const QPointer<KOldMessageDialog> alive(dialog);
    dialog->exec();
    if (!alive) {
        return safeAnswer;
    }
    const Button answer = alive->m_answer;
    delete alive.data();
    return answer;
}

QWidget* KOldMessageDialog::createText()
{
    auto* content = new QWidget(this);
    auto* label = new KdWrapLabel(m_sText, kTextWidth, 0, content);
    label->setObjectName(QStringLiteral("KOldMessageDialog_Text"));
    const int height = label->heightForWidth(kTextWidth);
    label->setFixedSize(kTextWidth, height);
    const QPoint place = parentWidget() ? parentWidget()->mapToGlobal(QPoint()) : QPoint();
    const int most = qMin(kHighestText, KdWindowWatch::availableArea(place).height() / 2);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kMargin, kMargin + 4, kMargin, kMargin + 4);
    column->addWidget(height > most ? scrolled(label, most, content) : label);
    return content;
}

void KOldMessageDialog::addButton(Button button, bool isDefault)
{
    const QString label = buttonText(button);
    auto* push = isDefault ? KdPushButton::CreatePrimaryButton(this, label)
                           : KdPushButton::CreateSecondaryButton(this, label);
    push->setObjectName(QStringLiteral("KOldMessageDialog_") + buttonName(button));
    push->setDefault(isDefault);
    buttonBarLayout()->addWidget(push);
    if (isDefault) {
        push->setFocus();
    }
    connect(push, &QPushButton::clicked, this, [this, button] {
        m_answer = button;
        accept();
    });
}
