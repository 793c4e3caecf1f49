#pragma once

#include <QImage>
#include <QWidget>

/**
 * A surface for moving pictures: shows the one that plays, whole and in its own shape, and the
 * poster while nothing plays.
 */
class StudioPictureView : public QWidget
{
    Q_OBJECT

public:
    explicit StudioPictureView(QWidget* parent = nullptr);

    /** @param poster null: none yet */
    void setPoster(const QImage& poster);
    /** @param picture may hold memory that is not its own; null: nothing plays */
    void setPicture(const QImage& picture);
    /** What is to be seen; null: nothing. */
    QImage shown() const { return m_picture.isNull() ? m_poster : m_picture; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_poster;
    QImage m_picture;
};
