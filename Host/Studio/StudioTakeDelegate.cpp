#include <Studio/StudioTakeDelegate.h>

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPaint.h>
#include <Studio/StudioTake.h>
#include <Studio/StudioTakeModel.h>

#include <QPainter>

namespace {

constexpr int kRowHeight = 64;
constexpr int kMargin = 12;
constexpr int kThumbnailWidth = 88;
constexpr int kThumbnailHeight = 40;
constexpr double kRadius = 6.0;

bool isBroken(const StudioTake& take)
{
    return take.state == StudioTake::State::Missing || take.state == StudioTake::State::Unreadable;
}

void paintGround(QPainter* painter, const QStyleOptionViewItem& option)
{
    const QRectF area = QRectF(option.rect).adjusted(4, 2, -4, -2);
    painter->setPen(Qt::NoPen);
    if (option.state & QStyle::State_Selected) {
        painter->setBrush(StudioPaint::skin(KdSkin::Accent, 0.18));
        painter->drawRoundedRect(area, kRadius, kRadius);
        // A bar as well as a tint: a state is never told by colour alone.
        painter->setBrush(StudioPaint::skin(KdSkin::Accent));
        painter->drawRoundedRect(QRectF(area.left(), area.top() + 12, 3, area.height() - 24), 1.5,
                                 1.5);
    } else if (option.state & QStyle::State_MouseOver) {
        painter->setBrush(StudioPaint::skin(KdSkin::Text, 0.06));
        painter->drawRoundedRect(area, kRadius, kRadius);
    }
    if ((option.state & QStyle::State_HasFocus) &&
        (option.state & QStyle::State_KeyboardFocusChange)) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(StudioPaint::skin(KdSkin::Accent), 2.0));
        painter->drawRoundedRect(area.adjusted(1, 1, -1, -1), kRadius, kRadius);
    }
}

struct Look
{
    StudioPeaks peaks;
    QImage picture;
};

void paintThumbnail(QPainter* painter, const QRect& area, const StudioTake& take, const Look& look,
                    bool enabled)
{
    const double opacity = enabled ? 1.0 : 0.4;
    painter->setPen(Qt::NoPen);
    painter->setBrush(StudioPaint::skin(KdSkin::Text, 0.07));
    painter->drawRoundedRect(area, 4.0, 4.0);
    if (isBroken(take)) {
        const QRect sign(area.center().x() - 11, area.center().y() - 11, 24, 24);
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(sign,
                            StudioPaint::pixmap(QStringLiteral("warning"), 24,
                                                StudioPaint::skin(KdSkin::Warn, opacity), ratio));
        return;
    }
    if (!look.picture.isNull()) {
        StudioPaint::thumbnail(*painter, area, look.picture, 4.0, opacity);
        return;
    }
    StudioPaint::waveform(*painter, QRectF(area).adjusted(6, 5, -5, -5), look.peaks,
                          StudioPaint::skin(KdSkin::Accent, opacity));
}

void paintLine(QPainter* painter, const QRect& area, const QString& text, const QColor& color)
{
    painter->setPen(color);
    const QString shown =
        painter->fontMetrics().elidedText(text.simplified(), Qt::ElideRight, area.width());
    painter->drawText(area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);
}

void paintTexts(QPainter* painter, const QRect& area, const StudioTake& take, bool enabled)
{
    const double opacity = enabled ? 1.0 : 0.4;
    const int line = area.height() / 2;
    const QRect first(area.left(), area.top(), area.width(), line);
    const QRect second(area.left(), area.top() + line, area.width(), line);
    paintLine(painter, first, take.name(), StudioPaint::skin(KdSkin::Text, opacity));
    const int quiet = isBroken(take) ? KdSkin::Warn : KdSkin::TextQuiet;
    paintLine(painter, second, describeTake(take), StudioPaint::skin(quiet, opacity));
}

} // namespace

void StudioTakeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const auto take = index.data(StudioTakeModel::TakeRole).value<StudioTake>();
    const Look look{index.data(StudioTakeModel::PeaksRole).value<StudioPeaks>(),
                    index.data(StudioTakeModel::ThumbnailRole).value<QImage>()};
    const bool enabled = option.state & QStyle::State_Enabled;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintGround(painter, option);
    const QRect thumbnail(option.rect.left() + kMargin,
                          option.rect.top() + (kRowHeight - kThumbnailHeight) / 2, kThumbnailWidth,
                          kThumbnailHeight);
    paintThumbnail(painter, thumbnail, take, look, enabled);
    const QRect texts(thumbnail.right() + kMargin, thumbnail.top(),
                      option.rect.right() - kMargin - thumbnail.right() - kMargin,
                      kThumbnailHeight);
    paintTexts(painter, texts, take, enabled);
    painter->restore();
}

QSize StudioTakeDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {kThumbnailWidth + 120, kRowHeight};
}
