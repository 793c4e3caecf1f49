#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QDialog;

/**
 * Nobody sits in front of a script: answers every modal message at once with its safe answer, by a
 * click on its button, and reports what it said. GUI thread.
 */
class StudioMessageWatch : public QObject
{
    Q_OBJECT

public:
    /** @param isMessage tells messages from other modal dialogs; empty: all of them are */
    explicit StudioMessageWatch(std::function<bool(const QDialog*)> isMessage = {},
                                QObject* parent = nullptr);
    ~StudioMessageWatch() override;

Q_SIGNALS:
    /** Comes before the answer. */
    void messageShown(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QDialog* message);

    std::function<bool(const QDialog*)> m_isMessage;
};
