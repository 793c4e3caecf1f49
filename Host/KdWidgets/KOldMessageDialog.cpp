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
int highestText(const QWidget* parent)
{
    const QPoint place = parent ? parent->mapToGlobal(QPoint()) : QPoint();
    return qMin(kHighestText, KdWindowWatch::availableArea(place).height() / 2);
}

QScrollArea* scrolled(QWidget* text, QWidget* parent)
{
    auto* area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(text);
    area->setFixedWidth(kTextWidth + area->verticalScrollBar()->sizeHint().width());
    return area;
}

} // namespace

KOldMessageDialog::KOldMessageDialog(const KdLiveText& text, QWidget* parent,
                                     QDialogButtonBox::StandardButtons buttons, Button safeAnswer,
                                     const KdLiveText& title)
    : KdFramelessDialog(parent), m_text(text), m_title(title), m_answer(safeAnswer)
{
    setObjectName(QStringLiteral("KOldMessageDialog"));
    // Another language takes another room.
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    setContentWidget(createText());
    for (const Button button :
         {QDialogButtonBox::No, QDialogButtonBox::Yes, QDialogButtonBox::Ok}) {
        if (buttons & button) {
            addButton(button, button == safeAnswer);
        }
    }
    KOldMessageDialog::RetranslateUi();
}

Button KOldMessageDialog::Infomation(const KdLiveText& text, QWidget* parent,
                                     QDialogButtonBox::StandardButtons buttons,
                                     const KdLiveText& title)
{
    const auto known =
        buttons & (QDialogButtonBox::Ok | QDialogButtonBox::Yes | QDialogButtonBox::No);
    const auto shown = known ? known : QDialogButtonBox::Ok;
    return ask(new KOldMessageDialog(text, parent, shown, QDialogButtonBox::Ok, title),
               QDialogButtonBox::Ok);
}

Button KOldMessageDialog::Question_YesNo(const KdLiveText& text, QWidget* parent, Button safeAnswer,
                                         const KdLiveText& title)
{
    const auto buttons = QDialogButtonBox::Yes | QDialogButtonBox::No;
    return ask(new KOldMessageDialog(text, parent, buttons, safeAnswer, title), safeAnswer);
}

QString KOldMessageDialog::text() const
{
    return m_pText->text();
}

void KOldMessageDialog::RetranslateUi()
{
    const QString title = m_title.now();
    SetTitleName(title.isEmpty() ? QGuiApplication::applicationDisplayName() : title);
    m_pText->setText(m_text.now());
    setAccessibleDescription(text());
    fitText();
    for (const auto& button : qAsConst(m_buttons)) {
        button.second->setText(buttonText(button.first));
    }
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
    m_pText = new KdWrapLabel(m_text.now(), kTextWidth, 0, content);
    m_pText->setObjectName(QStringLiteral("KOldMessageDialog_Text"));
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kMargin, kMargin + 4, kMargin, kMargin + 4);
    if (m_pText->heightForWidth(kTextWidth) > highestText(parentWidget())) {
        m_pScroll = scrolled(m_pText, content);
        column->addWidget(m_pScroll);
    } else {
        column->addWidget(m_pText);
    }
    return content;
}

void KOldMessageDialog::fitText()
{
    const int height = m_pText->heightForWidth(kTextWidth);
    m_pText->setFixedSize(kTextWidth, height);
    if (m_pScroll) {
        m_pScroll->setFixedHeight(qMin(height, highestText(parentWidget())));
    }
}

void KOldMessageDialog::addButton(Button button, bool isDefault)
{
    auto* push = isDefault ? KdPushButton::CreatePrimaryButton(this)
                           : KdPushButton::CreateSecondaryButton(this);
    push->setObjectName(QStringLiteral("KOldMessageDialog_") + buttonName(button));
    push->setDefault(isDefault);
    buttonBarLayout()->addWidget(push);
    m_buttons.append({button, push});
    if (isDefault) {
        push->setFocus();
    }
    connect(push, &QPushButton::clicked, this, [this, button] {
        m_answer = button;
        accept();
    });
}
