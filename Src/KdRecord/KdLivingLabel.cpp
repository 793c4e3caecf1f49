#include "KdLivingLabel.h"

#include <QFontMetrics>
#include <QTimer>

namespace {

constexpr int kInterval = 500; // ms
constexpr int kMostDots = 3;

} // namespace

KdLivingLabel::KdLivingLabel(QWidget* parent) : KdLabel(parent), m_pTimer(new QTimer(this))
{
    m_pTimer->setObjectName(QStringLiteral("KdLivingLabel_Timer"));
    m_pTimer->setInterval(kInterval);
    connect(m_pTimer, &QTimer::timeout, this, &KdLivingLabel::grow);
    m_pTimer->start();
}

KdLivingLabel::~KdLivingLabel()
{
    m_pTimer->stop();
}

void KdLivingLabel::setText(const QString& text)
{
    m_pTimer->stop();
    m_sBaseText = text;
    setAccessibleName(text);
    KdLabel::setText(text);
    m_pTimer->start();
}

QSize KdLivingLabel::sizeHint() const
{
    const int missing = kMostDots - dots();
    const QString rest(qMax(0, missing), QLatin1Char('.'));
    return KdLabel::sizeHint() + QSize(fontMetrics().horizontalAdvance(rest), 0);
}

void KdLivingLabel::grow()
{
    KdLabel::setText(dots() < kMostDots ? text() + QLatin1Char('.') : m_sBaseText);
}

int KdLivingLabel::dots() const
{
    return text().size() - m_sBaseText.size();
}
