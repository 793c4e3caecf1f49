#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

#include <functional>

class KdToolButton;
class QLineEdit;

/** A line edit for a folder with a browse button. */
class KDWIDGETS_EXPORT KdOpenFileLineEdit : public QWidget
{
    Q_OBJECT

public:
    explicit KdOpenFileLineEdit(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
    void setBrowseButtonVisible(bool visible);
    QLineEdit* lineEdit() const { return m_pEdit; }
    /** Object name "KdOpenFileLineEdit_Browse". */
    KdToolButton* browseButton() const { return m_pBrowse; }

    /** Asks for a folder, given the current one; empty: no choice. */
    using FolderChooser = std::function<QString(QWidget* parent, const QString& current)>;
    /** @param chooser null: the system's dialog, as at the start. */
    void setFolderChooser(FolderChooser chooser);

Q_SIGNALS:
    /** Every change of the text. */
    void textChanged(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void retranslate();
    void browse();

    QLineEdit* m_pEdit = nullptr;
    KdToolButton* m_pBrowse = nullptr;
    FolderChooser m_chooser;
};
