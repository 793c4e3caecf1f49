#include <KdWidgets/KdSkinManager.h>

#include <KdCore/KdBaseLog.h>
#include <KdWidgets/KdAccessibility.h>
#include <KdWidgets/KdPalette.h>
#include <KdWidgets/KdToolTipRefresh.h>

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QPalette>
#include <QPointer>
#include <QStyle>
#include <QStyleFactory>
#include <QThread>
#include <QVector>
#include <QWidget>

static void initSkinResources()
{
    Q_INIT_RESOURCE(KdSkin);
    Q_INIT_RESOURCE(KdSkinIcons);
}

namespace KdSkin {

namespace {

constexpr double kFontPoints = 9.0;
constexpr double kDisabled = 0.4;

const char* const kSource = "Host/KdWidgets/KdSkinManager";

QString readResource(const QString& name)
{
    QFile file(QStringLiteral(":/KdSkin/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString tokenOf(SkinColor number)
{
    switch (number) {
    case Window:
        return QStringLiteral("window");
    case Surface:
        return QStringLiteral("surface");
    case Stroke:
        return QStringLiteral("stroke");
    case Field:
        return QStringLiteral("field");
    case Text:
        return QStringLiteral("text");
    case TextQuiet:
        return QStringLiteral("text-quiet");
    case Accent:
        return QStringLiteral("accent");
    case OnAccent:
        return QStringLiteral("on-accent");
    case Record:
        return QStringLiteral("record");
    case Good:
        return QStringLiteral("good");
    case Warn:
        return QStringLiteral("warn");
    }
    return QString();
}

/** For what no sheet styles, such as the system's own dialogs drawn by Qt. */
QPalette systemPalette(const KdPalette& skin)
{
    const auto color = [&skin](SkinColor number) { return skin.color(tokenOf(number)); };
    QPalette palette(color(Field), color(Window));
    palette.setColor(QPalette::WindowText, color(Text));
    palette.setColor(QPalette::Text, color(Text));
    palette.setColor(QPalette::ButtonText, color(Text));
    palette.setColor(QPalette::Base, color(Field));
    palette.setColor(QPalette::AlternateBase, color(Surface));
    palette.setColor(QPalette::ToolTipBase, color(Surface));
    palette.setColor(QPalette::ToolTipText, color(Text));
    palette.setColor(QPalette::PlaceholderText, color(TextQuiet));
    palette.setColor(QPalette::Highlight, color(Accent));
    palette.setColor(QPalette::HighlightedText, color(OnAccent));
    // Between the accent, which says that it can be pressed, and what can be read on any ground.
    const QColor link(skin.fill(QStringLiteral("@{accent+text 25%}")));
    palette.setColor(QPalette::Link, link);
    palette.setColor(QPalette::LinkVisited, link);
    QColor faint = color(Text);
    faint.setAlphaF(kDisabled);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

/** The sheets give a small style its colours; fonts keep the system's family. */
void prepareApplication()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font = QApplication::font();
    font.setPointSizeF(kFontPoints);
    QApplication::setFont(font);
    KdAccessibility::install();
    KdToolTipRefresh::install();
}

} // namespace

class KdSkinManager::Private
{
public:
    struct Styled
    {
        QPointer<QWidget> widget;
        QString key;
    };

    QString skin;
    KdPalette palette;
    QHash<QString, QString> sheets; ///< the skin's, by key, as far as they were asked for
    QHash<QObject*, Styled> styled;
};

KdSkinManager::KdSkinManager() : d(std::make_unique<Private>())
{
    Q_ASSERT(qApp && QThread::currentThread() == qApp->thread());
    initSkinResources();
    prepareApplication();
    setSkin(skins().constFirst());
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
        KdBaseLog::write(KdBaseLog::Warning, {kSource, "KdSkinManager::setSkin"},
                         "There is no skin '%s'", qUtf8Printable(name));
        return false;
    }
    d->skin = name;
    d->palette = KdPalette::parse(name, readResource(name + QStringLiteral(".palette")));
    d->sheets.clear();
    QApplication::setPalette(systemPalette(d->palette));
    qApp->setStyleSheet(styleSheet(QStringLiteral("Application")));
    // A copy: a style change may make widgets come and go.
    const QList<Private::Styled> styled = d->styled.values();
    for (const Private::Styled& entry : styled) {
        if (entry.widget) {
            entry.widget->setStyleSheet(styleSheet(entry.key));
        }
    }
    Q_EMIT skinChanged();
    return true;
}

bool KdSkinManager::applyStyleSheet(QWidget* widget, const QString& key, int /*flags*/)
{
    const QString sheet = styleSheet(key);
    if (!widget || sheet.isEmpty()) {
        KdBaseLog::write(KdBaseLog::Warning, {kSource, "KdSkinManager::applyStyleSheet"},
                         widget ? "There is no style sheet '%s'"
                                : "No widget for the style sheet '%s'",
                         qUtf8Printable(key));
        return false;
    }
    if (!d->styled.contains(widget)) {
        connect(widget, &QObject::destroyed, this,
                [this](QObject* gone) { d->styled.remove(gone); });
    }
    d->styled.insert(widget, {widget, key});
    widget->setStyleSheet(sheet);
    return true;
}

QString KdSkinManager::styleSheet(const QString& key) const
{
    const auto known = d->sheets.constFind(key);
    if (known != d->sheets.constEnd()) {
        return *known;
    }
    QString sheet = d->palette.fill(readResource(key + QStringLiteral(".qss")));
    if (!sheet.isEmpty()) {
        d->sheets.insert(key, sheet);
    }
    return sheet;
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

// What was never polished will be, by what it is then, before anybody sees or measures it.
void KdSkinManager::repolish(QWidget* widget)
{
    if (!widget->testAttribute(Qt::WA_WState_Polished)) {
        return;
    }
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

} // namespace KdSkin
