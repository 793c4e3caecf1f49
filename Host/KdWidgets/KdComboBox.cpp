#include <KdWidgets/KdComboBox.h>

#include <KdWidgets/KdSkinManager.h>

#include <KdWidgets/KdText.h>

#include <QHelpEvent>
#include <QListView>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>

namespace {

constexpr int kWidestItem = 480;
constexpr int kShownCharacters = 8;

/** Item texts come from devices: no line breaks, no item wider than a dialog. */
class OneLineDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override
    {
        return KdText::singleLine(QStyledItemDelegate::displayText(value, locale));
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QSize hint = QStyledItemDelegate::sizeHint(option, index);
        return {qMin(hint.width(), kWidestItem), hint.height()};
    }
};

} // namespace

KdComboBox::KdComboBox(QWidget* parent) : QComboBox(parent)
{
    KdSkin::KdSkinManager::instance();
}

QSize KdComboBox::sizeHint() const
{
    ensurePolished();
    const QFontMetrics metrics = fontMetrics();
    const QSize content(kShownCharacters * metrics.averageCharWidth(), metrics.height());
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, this);
}

QSize KdComboBox::minimumSizeHint() const
{
    return sizeHint();
}

void KdComboBox::showPopup()
{
    preparePopup();
    namePopup();
    QComboBox::showPopup();
    if (isPopupVisible()) {
        Q_EMIT sigShowPopUp();
    }
}

bool KdComboBox::isPopupVisible() const
{
    return m_pPopup && m_pPopup->isVisible();
}

// Not by view(): it makes the list, which costs more than the rest of the combo box. Until there is
// one the hidden rows are kept here.

bool KdComboBox::isRowHidden(int row) const
{
    const QModelIndex item = itemAt(row);
    const auto* list = findChild<QListView*>();
    return item.isValid() && (m_hidden.contains(item) || (list && list->isRowHidden(row)));
}

void KdComboBox::setRowHidden(int row, bool hidden)
{
    const QModelIndex item = itemAt(row);
    m_hidden.removeAll(item);
    if (auto* list = findChild<QListView*>()) {
        list->setRowHidden(row, hidden);
    } else if (hidden && item.isValid()) {
        m_hidden.append(item);
    }
}

QModelIndex KdComboBox::itemAt(int row) const
{
    return model()->index(row, modelColumn(), rootModelIndex());
}

void KdComboBox::hideRows()
{
    for (const QPersistentModelIndex& item : qAsConst(m_hidden)) {
        if (auto* list = qobject_cast<QListView*>(view()); list && item.isValid()) {
            list->setRowHidden(item.row(), true);
        }
    }
    m_hidden.clear();
}

void KdComboBox::preparePopup()
{
    hideRows();
    if (m_pPopup && m_pPopup == view()->window()) {
        return;
    }
    setItemDelegate(new OneLineDelegate(this));
    view()->setTextElideMode(Qt::ElideMiddle);
    m_pPopup = view()->window();
    m_pPopup->installEventFilter(this);
}

/** Assistive technology goes from the combo box to its list, which is nameless by itself. */
void KdComboBox::namePopup()
{
    view()->setAccessibleName(accessibleName());
}

void KdComboBox::changeEvent(QEvent* event)
{
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && isPopupVisible()) {
        namePopup();
    }
}

QString KdComboBox::elidedCurrentText() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(KdText::singleLine(currentText()), Qt::ElideRight,
                                    field.width());
}

bool KdComboBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const QString hidden = elidedCurrentText() == currentText() ? QString() : currentText();
        const QString tip = toolTip().isEmpty() ? hidden : toolTip();
        KdText::showToolTip(static_cast<QHelpEvent*>(event), this, KdText::toolTip(tip));
        return true;
    }
    return QComboBox::event(event);
}

bool KdComboBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pPopup && event->type() == QEvent::Hide) {
        Q_EMIT sigHidePopUp();
    }
    return QComboBox::eventFilter(watched, event);
}

void KdComboBox::paintEvent(QPaintEvent* event)
{
    if (isEditable()) {
        QComboBox::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = elidedCurrentText();
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void KdComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
