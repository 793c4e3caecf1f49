#include <KdWidgets/KdSkinManager.h>

#include <KdWidgets/KdPalette.h>

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QPalette>
#include <QStyle>
#include <QThread>
#include <QWidget>

static void initSkinResources()
{
    Q_INIT_RESOURCE(KdSkin);
}

namespace KdSkin {

namespace {

QString readResource(const QString& name)
{
    QFile file(QStringLiteral(":/KdSkin/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString tokenOf(SkinColor number)
{
    static const QHash<int, QString> tokens = {
        {Window, QStringLiteral("window")}, {Surface, QStringLiteral("surface")},
        {Stroke, QStringLiteral("stroke")}, {Field, QStringLiteral("field")},
        {Text, QStringLiteral("text")},     {TextQuiet, QStringLiteral("text-quiet")},
        {Accent, QStringLiteral("accent")}, {OnAccent, QStringLiteral("on-accent")},
        {Record, QStringLiteral("record")}, {Good, QStringLiteral("good")},
        {Warn, QStringLiteral("warn")},
    };
    return tokens.value(number);
}

QPalette systemPalette(const KdPalette& skin)
{
    const auto color = [&skin](const char* token) { return skin.color(QLatin1String(token)); };
    QPalette palette;
    palette.setColor(QPalette::Window, color("window"));
    palette.setColor(QPalette::WindowText, color("text"));
    palette.setColor(QPalette::Base, color("field"));
    palette.setColor(QPalette::AlternateBase, color("surface"));
    palette.setColor(QPalette::Text, color("text"));
    palette.setColor(QPalette::Button, color("field"));
    palette.setColor(QPalette::ButtonText, color("text"));
    palette.setColor(QPalette::ToolTipBase, color("surface"));
    palette.setColor(QPalette::ToolTipText, color("text"));
    palette.setColor(QPalette::Highlight, color("accent"));
    palette.setColor(QPalette::HighlightedText, color("on-accent"));
    palette.setColor(QPalette::PlaceholderText, color("text-quiet"));
    return palette;
}

} // namespace

class KdSkinManager::Private
{
public:
    QString skin;
    KdPalette palette;
    QHash<QWidget*, QString> keys;
};

KdSkinManager::KdSkinManager() : d(std::make_unique<Private>())
{
    initSkinResources();
    setSkin(QStringLiteral("dark"));
}

KdSkinManager::~KdSkinManager() = default;

KdSkinManager* KdSkinManager::instance()
{
    static KdSkinManager manager;
    return &manager;
}

QStringList KdSkinManager::skins() const
{
    return {QStringLiteral("dark"), QStringLiteral("light")};
}

QString KdSkinManager::skin() const
{
    return d->skin;
}

bool KdSkinManager::setSkin(const QString& name)
{
    if (!skins().contains(name)) {
        return false;
    }
    d->skin = name;
    d->palette = KdPalette::parse(readResource(name + QStringLiteral(".palette")));
    QApplication::setPalette(systemPalette(d->palette));
    qApp->setStyleSheet(styleSheet(QStringLiteral("Application")));
    for (auto styled = d->keys.cbegin(); styled != d->keys.cend(); ++styled) {
        styled.key()->setStyleSheet(styleSheet(styled.value()));
    }
    Q_EMIT skinChanged();
    return true;
}

bool KdSkinManager::applyStyleSheet(QWidget* widget, const QString& key, int /*flags*/)
{
    const QString sheet = styleSheet(key);
    if (!widget || sheet.isEmpty()) {
        return false;
    }
    if (!d->keys.contains(widget)) {
        connect(widget, &QObject::destroyed, this, [this, widget] { d->keys.remove(widget); });
    }
    d->keys.insert(widget, key);
    widget->setStyleSheet(sheet);
    return true;
}

QString KdSkinManager::styleSheet(const QString& key) const
{
    return d->palette.fill(readResource(key + QStringLiteral(".qss")));
}

QColor KdSkinManager::color(const QString& token) const
{
    return d->palette.color(token);
}

QColor KdSkinManager::color(SkinColor number) const
{
    return color(tokenOf(number));
}

void KdSkinManager::setCheckState(QWidget* widget, bool checked)
{
    const QString state = checked ? QStringLiteral("checked") : QStringLiteral("unchecked");
    widget->setProperty("checkState", state);
    repolish(widget);
}

void KdSkinManager::repolish(QWidget* widget)
{
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

} // namespace KdSkin
