#include <KdWidgets/KdOpenFileLineEdit.h>

#include <KdWidgets/KdToolButton.h>

#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>

#include <utility>

namespace {
constexpr int kButtonSize = 20;
constexpr int kInset = 2;
} // namespace

KdOpenFileLineEdit::KdOpenFileLineEdit(QWidget* parent)
    : QWidget(parent)
    , m_pEdit(new QLineEdit(this))
    , m_pBrowse(
          KdToolButton::CreateToolButton(m_pEdit, QStringLiteral("KdOpenFileLineEdit_Browse")))
{
    layOut();
    retranslate();
    setFocusProxy(m_pEdit);
    setFolderChooser(nullptr);
    setBrowseButtonVisible(true);
    connect(m_pEdit, &QLineEdit::textChanged, this, &KdOpenFileLineEdit::textChanged);
    connect(m_pBrowse, &QToolButton::clicked, this, &KdOpenFileLineEdit::browse);
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
    m_pEdit->setTextMargins(0, 0, visible ? kButtonSize - kInset : 0, 0);
}

void KdOpenFileLineEdit::setFolderChooser(FolderChooser chooser)
{
    m_chooser = std::move(chooser);
    if (!m_chooser) {
        m_chooser = [](QWidget* window, const QString& current) {
            return QFileDialog::getExistingDirectory(window, tr("Choose a folder"), current);
        };
    }
}

void KdOpenFileLineEdit::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QWidget::changeEvent(event);
}

void KdOpenFileLineEdit::layOut()
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_pEdit);
    m_pBrowse->setFixedSize(kButtonSize, kButtonSize);
    m_pBrowse->setCursor(Qt::ArrowCursor);
    auto* inside = new QHBoxLayout(m_pEdit);
    inside->setContentsMargins(kInset, 0, kInset, 0);
    inside->addStretch();
    inside->addWidget(m_pBrowse);
}

void KdOpenFileLineEdit::retranslate()
{
    m_pBrowse->setToolTip(tr("Choose a folder"));
}

void KdOpenFileLineEdit::browse()
{
    const QPointer<KdOpenFileLineEdit> alive(this);
    // A copy: the chooser runs an event loop of its own, in which this widget may go.
    const FolderChooser chooser = m_chooser;
    const QString folder = chooser(this, text());
    if (alive && !folder.isEmpty()) {
        setText(QDir::toNativeSeparators(folder));
    }
}
