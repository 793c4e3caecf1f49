#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

#include <functional>

class KdToolButton;
class QLineEdit;

/** A line edit for a folder with a browse button. GUI thread. */
class KDWIDGETS_EXPORT KdOpenFileLineEdit : public QWidget
{
    Q_OBJECT

public:
    /** @param parent owns the field; may be null. */
    explicit KdOpenFileLineEdit(QWidget* parent = nullptr);

    /** @return the text as it stands there; nobody has looked whether it is a folder. */
    QString text() const;
    /** @param text replaces what stands there. */
    void setText(const QString& text);
    /** @param visible whether there is a browse button; true at first. */
    void setBrowseButtonVisible(bool visible);
    /** @return the field itself; never null, not the caller's. */
    QLineEdit* lineEdit() const { return m_pEdit; }
    /**
     * @return the button, object name "KdOpenFileLineEdit_Browse"; never null, not the caller's.
     */
    KdToolButton* browseButton() const { return m_pBrowse; }

    /**
     * Asks for a folder, given the parent for a dialog and the current text; answers an empty text
     * for no choice. May run an event loop and destroy the field.
     */
    using FolderChooser = std::function<QString(QWidget* parent, const QString& current)>;
    /**
     * @param chooser asked when the button is pressed; null: the system's dialog, as at the start.
     */
    void setFolderChooser(FolderChooser chooser);

Q_SIGNALS:
    /** @param text at every change, the user's or by setText(). */
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
