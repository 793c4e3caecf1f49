#include <KdWidgets/KdOpenFileLineEdit.h>

#include <KdWidgets/KdToolButton.h>

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>

KdOpenFileLineEdit::KdOpenFileLineEdit(QWidget* parent)
    : QWidget(parent)
    , m_pEdit(new QLineEdit(this))
    , m_pBrowse(KdToolButton::CreateToolButton(this, QStringLiteral("KdOpenFileLineEdit_Browse")))
    , m_chooser([](QWidget* window, const QString& current) {
        return QFileDialog::getExistingDirectory(window, QString(), current);
    })
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_pEdit, 1);
    row->addWidget(m_pBrowse);
    setFocusProxy(m_pEdit);
    m_pBrowse->setToolTip(tr("Choose a folder"));
    connect(m_pEdit, &QLineEdit::textChanged, this, &KdOpenFileLineEdit::textChanged);
    connect(m_pBrowse, &QToolButton::clicked, this, [this] { browse(); });
}

QString KdOpenFileLineEdit::text() const
{
    return m_pEdit->text();
}

void KdOpenFileLineEdit::setText(const QString& text)
{
    m_pEdit->setText(text);
}

void KdOpenFileLineEdit::setBrowseButtonVisible(bool visible)
{
    m_pBrowse->setVisible(visible);
}

void KdOpenFileLineEdit::setFolderChooser(FolderChooser chooser)
{
    m_chooser = std::move(chooser);
}

void KdOpenFileLineEdit::browse()
{
    const QPointer<KdOpenFileLineEdit> alive(this);
    const QString folder = m_chooser ? m_chooser(this, text()) : QString();
    if (alive && !folder.isEmpty()) {
        setText(folder);
    }
}
