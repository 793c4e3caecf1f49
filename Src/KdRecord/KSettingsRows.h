#pragma once

#include "KComboboxExt.h"

#include <KdWidgets/KdComboBox.h>

#include <QString>
#include <QVariant>

class KdLabel;
class QVBoxLayout;
class QWidget;

/** Builds a page of advanced settings: a title, rows below it with gaps between them. GUI thread.
 */
class KSettingsRows
{
public:
    /** Gives the page its layout. */
    explicit KSettingsRows(QWidget* page);

    /** What is added belongs to the page. */
    KdLabel* addTitle();
    KComboboxExt* addRow(const QString& name);
    void add(QWidget* widget, int height);

    /** Sets the text of an item that is there, or adds the item. Items keep their position for
     * life, so that a new language changes texts but no selection. */
    static void setItem(KComboboxExt* row, int position, const QString& text, const QVariant& data);
    /** Selects the first item with that data; without one the row stays as it is. */
    static void select(KComboboxExt* row, const QVariant& data);

    /** Page has sigBtnClick(QString): emitted with name when the list of the row is opened. */
    template <typename Page>
    static void reportPopup(KComboboxExt* row, Page* page, const QString& name)
    {
        QObject::connect(row->combobox(), &KdComboBox::sigShowPopUp, page,
                         [page, name] { Q_EMIT page->sigBtnClick(name); });
    }

    /** Page has sigParaChange(): emitted when the row has another selection. */
    template <typename Page>
    static void reportChange(KComboboxExt* row, Page* page)
    {
        QObject::connect(row->combobox(), QOverload<int>::of(&KdComboBox::currentIndexChanged),
                         page, &Page::sigParaChange);
    }

private:
    QWidget* const m_pPage;
    QVBoxLayout* const m_pLayout;
};
