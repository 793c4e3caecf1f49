#include <KdWidgets/KdIcon.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QFile>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

const QStringList kStates{QStringLiteral("normal"), QStringLiteral("hover"),
                          QStringLiteral("pressed"), QStringLiteral("disabled")};

QString drawing(const QString& set, const QString& state)
{
    QFile file(QStringLiteral(":/SVGResourceFile/%1_%2.svg").arg(set, state));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/** The colour that covers most of an icon. */
QColor mainColor(const QImage& image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            counts[pixel] += qAlpha(pixel) == 255 ? 1 : 0;
        }
    }
    const auto most = std::max_element(counts.cbegin(), counts.cend());
    return most == counts.cend() ? QColor() : QColor(most.key());
}

} // namespace

/** The names are part of what the module promises; hosts and sheets refer to them. */
class tst_KdRecordResources : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void imagesHaveTheirSizeAndADenseSibling_data();
    void imagesHaveTheirSizeAndADenseSibling();
    void drawingsOfASetDifferInColourOnly_data();
    void drawingsOfASetDifferInColourOnly();
    void iconsStandOutInEverySkin_data();
    void iconsStandOutInEverySkin();

private:
    static void addImages();
};

void tst_KdRecordResources::addImages()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("side");

    const auto row = [](const char* name, int side) {
        QTest::newRow(name) << QString::fromLatin1(name) << side;
    };
    row("MediaLibraryView/icon16_green_chevron_right-normal", 16);
    row("MediaLibraryView/icon16_green_chevron_right-hover", 16);
    row("MediaLibraryView/icon16_green_chevron_right-pressed", 16);
    row("MediaLibraryView/icon16_green_chevron_right-disable", 16);
    row("icon24_toast_info", 24);
    row("icon24_success", 24);
    row("icon16_help_normal", 16);
    row("icon16_audiorecord-nostart", 16);
    row("icon16_audiorecord-running", 16);
    row("icon145_Ellipse", 145);
}

void tst_KdRecordResources::imagesHaveTheirSizeAndADenseSibling_data()
{
    addImages();
}

void tst_KdRecordResources::imagesHaveTheirSizeAndADenseSibling()
{
    QFETCH(QString, name);
    QFETCH(int, side);
    const QString path = QStringLiteral(":/Resource/") + name;
    QCOMPARE(QImage(path + QStringLiteral(".png")).size(), QSize(side, side));
    QCOMPARE(QImage(path + QStringLiteral("@2x.png")).size(), QSize(2 * side, 2 * side));
}

void tst_KdRecordResources::drawingsOfASetDifferInColourOnly_data()
{
    QTest::addColumn<QString>("set");

    for (const char* set : {"icon36_reset", "icon36_player_pause", "icon36_player_continue"}) {
        QTest::newRow(set) << QString::fromLatin1(set);
    }
}

void tst_KdRecordResources::drawingsOfASetDifferInColourOnly()
{
    QFETCH(QString, set);
    const QRegularExpression color(QStringLiteral("#[0-9A-F]{6}| opacity=\"0.4\""));
    QStringList seen;
    for (const QString& state : kStates) {
        QString source = drawing(set, state);
        QVERIFY2(!source.isEmpty(), qPrintable(state));
        QVERIFY(!seen.contains(source));
        seen.append(source);
        QCOMPARE(source.remove(color), drawing(set, kStates.first()).remove(color));
        const QString file = QStringLiteral(":/SVGResourceFile/%1_%2.svg").arg(set, state);
        QCOMPARE(KdIcon::naturalSize(file), QSize(36, 36));
    }
}

void tst_KdRecordResources::iconsStandOutInEverySkin_data()
{
    QTest::addColumn<QString>("file");

    for (const char* name :
         {"icon24_toast_info", "icon24_success", "icon16_help_normal", "icon16_audiorecord-nostart",
          "icon16_audiorecord-running", "MediaLibraryView/icon16_green_chevron_right-normal",
          "MediaLibraryView/icon16_green_chevron_right-hover",
          "MediaLibraryView/icon16_green_chevron_right-pressed"}) {
        QTest::newRow(name) << QStringLiteral(":/Resource/%1@2x.png").arg(QLatin1String(name));
    }
    for (const char* set : {"icon36_reset", "icon36_player_pause", "icon36_player_continue"}) {
        for (const QString& state : kStates.mid(0, 3)) {
            QTest::addRow("%s %s", set, qPrintable(state))
                << QStringLiteral(":/SVGResourceFile/%1_%2.svg").arg(QLatin1String(set), state);
        }
    }
}

void tst_KdRecordResources::iconsStandOutInEverySkin()
{
    QFETCH(QString, file);
    auto* manager = KdSkin::KdSkinManager::instance();
    const QSize size = KdIcon::naturalSize(file);
    const QColor color = mainColor(KdIcon::pixmap(file, size, 1.0).toImage());
    QVERIFY(color.isValid());
    for (const QString& skin : manager->skins()) {
        QVERIFY(manager->setSkin(skin));
        for (const auto ground : {KdSkin::Window, KdSkin::Surface}) {
            const double contrast = WidgetLooks::contrast(color, manager->color(ground));
            // Graphics that carry a meaning need 3:1; a press lasts for a moment only.
            const double needed = file.contains(QLatin1String("pressed")) ? 2.0 : 3.0;
            QVERIFY2(contrast >= needed,
                     qPrintable(QStringLiteral("%1 %2").arg(skin).arg(contrast)));
        }
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordResources>(argc, argv);
}

#include "tst_KdRecordResources.moc"
