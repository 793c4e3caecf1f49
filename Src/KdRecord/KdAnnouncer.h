#pragma once

#include <QWidget>

/**
 * Says through assistive technology what the eye sees happen to a take: a live region of a panel,
 * too small to be seen, with the last news as its name. Belongs to the panel. GUI thread.
 */
class KdAnnouncer : public QWidget
{
    Q_OBJECT

public:
    explicit KdAnnouncer(QWidget* panel);
    ~KdAnnouncer() override;

    void tellCountdownStopped();
    void tellStarted();
    void tellResumed();
    void tellStopped();
    /** The last device has gone. */
    void tellNoDevice();

protected:
    void changeEvent(QEvent* event) override;

private:
    /** @param news a text of this class, before its translation */
    void tell(const char* news);

    const char* m_news = nullptr;
};
