#include <KdWidgets/KOldMessageDialog.h>

#include <KdWidgets/KdPushButton.h>

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>

KOldMessageDialog::KOldMessageDialog(const QString& text, QWidget* parent,
                                     QDialogButtonBox::StandardButtons buttons,
                                     QDialogButtonBox::StandardButton safeAnswer,
                                     const QString& title)
    : KdFramelessDialog(parent), m_sText(text), m_answer(safeAnswer)
{
    setObjectName(QStringLiteral("KOldMessageDialog"));
    SetTitleName(title.isEmpty() ? QGuiApplication::applicationDisplayName() : title);
    auto* label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("KOldMessageDialog_Text"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMargin(16);
    setContentWidget(label);
    for (const auto button : {QDialogButtonBox::No, QDialogButtonBox::Yes, QDialogButtonBox::Ok}) {
        if (buttons & button) {
            addButton(button, button == safeAnswer);
        }
    }
    setMinimumWidth(360);
}

QDialogButtonBox::StandardButton
KOldMessageDialog::Infomation(const QString& text, QWidget* parent,
                              QDialogButtonBox::StandardButtons buttons, const QString& title)
{
    const auto answer = QDialogButtonBox::Ok;
    return ask(new KOldMessageDialog(text, parent, buttons, answer, title), answer);
}

QDialogButtonBox::StandardButton
KOldMessageDialog::Question_YesNo(const QString& text, QWidget* parent,
                                  QDialogButtonBox::StandardButton safeAnswer, const QString& title)
{
    const auto buttons = QDialogButtonBox::Yes | QDialogButtonBox::No;
    return ask(new KOldMessageDialog(text, parent, buttons, safeAnswer, title), safeAnswer);
}

QString KOldMessageDialog::text() const
{
    return m_sText;
}

QDialogButtonBox::StandardButton KOldMessageDialog::ask(KOldMessageDialog* dialog,
                                                        QDialogButtonBox::StandardButton safeAnswer)
{
    const QPointer<KOldMessageDialog> alive(dialog);
    dialog->exec();
    if (!alive) {
        return safeAnswer;
    }
    const auto answer = alive->m_answer;
    delete alive;
    return answer;
}

void KOldMessageDialog::addButton(QDialogButtonBox::StandardButton button, bool isDefault)
{
    const bool isOk = button == QDialogButtonBox::Ok;
    const bool isYes = button == QDialogButtonBox::Yes;
    const QString label = isOk ? tr("OK") : isYes ? tr("Yes") : tr("No");
    const char* name = isOk ? "Ok" : isYes ? "Yes" : "No";
    auto* push = isDefault ? KdPushButton::CreatePrimaryButton(this, label)
                           : KdPushButton::CreateSecondaryButton(this, label);
    push->setObjectName(QStringLiteral("KOldMessageDialog_") + QLatin1String(name));
    push->setDefault(isDefault);
    buttonBarLayout()->addWidget(push);
    connect(push, &QPushButton::clicked, this, [this, button] {
        m_answer = button;
        accept();
    });
}
