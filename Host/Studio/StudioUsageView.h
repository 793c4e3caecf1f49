#pragma once

#include <QListWidget>
#include <QTimer>

struct KdTrackEventRecord;

/** One line for a usage event: time, name, and the properties in their order. */
QString describeUsageEvent(const KdTrackEventRecord& event);

/** The usage events of this run, newest last; follows the log while it can be seen. */
class StudioUsageView : public QListWidget
{
    Q_OBJECT

public:
    explicit StudioUsageView(QWidget* parent = nullptr);

    /** Adds what the log holds by now. */
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QTimer m_refresh;
    QStringList m_lines;
};
