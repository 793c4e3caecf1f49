#include "KSettingsRows.h"

#include <KdWidgets/KdLabel.h>

#include <QBoxLayout>

namespace {

constexpr int Gap = 16;
constexpr int TitleHeight = 16;
constexpr int RowHeight = 52;

} // namespace

KSettingsRows::KSettingsRows(QWidget* page) : m_pPage(page), m_pLayout(new QVBoxLayout(page))
{
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
}

KdLabel* KSettingsRows::addTitle()
{
    auto* const title = new KdLabel(m_pPage);
    title->setFixedHeight(TitleHeight);
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    m_pLayout->addWidget(title);
    return title;
}

KComboboxExt* KSettingsRows::addRow(const QString& name)
{
    auto* const row = new KComboboxExt(m_pPage);
    row->setObjectName(name);
    add(row, RowHeight);
    return row;
}

void KSettingsRows::add(QWidget* widget, int height)
{
    widget->setFixedHeight(height);
    // Gaps give way where the page stands lower than it wants to be; the rows never do.
    m_pLayout->addItem(new QSpacerItem(0, Gap, QSizePolicy::Minimum, QSizePolicy::Maximum));
    m_pLayout->addWidget(widget);
}

void KSettingsRows::setItem(KComboboxExt* row, int position, const QString& text,
                            const QVariant& data)
{
    KdComboBox* const combo = row->combobox();
    if (position < combo->count()) {
        combo->setItemText(position, text);
    } else {
        combo->addItem(text, data);
    }
}

void KSettingsRows::select(KComboboxExt* row, const QVariant& data)
{
    const int position = row->combobox()->findData(data);
    if (position >= 0) {
        row->combobox()->setCurrentIndex(position);
    }
}
