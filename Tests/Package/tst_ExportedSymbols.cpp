#include <Support/Command.h>
#include <Support/KdTestCase.h>

#include <QRegularExpression>
#include <QSet>

namespace {

/** What the module is for its hosts; everything else in it is its own business. */
QStringList publicNames()
{
    return {QStringLiteral("KdAudioRecordView"),
            QStringLiteral("KdWebcamRecordView"),
            QStringLiteral("KdCountCtrl"),
            QStringLiteral("KdCountCtrlVideo"),
            QStringLiteral("KdWebCamDisplayLabel"),
            QStringLiteral("KRecordPreViewSettingRadiusWidget"),
            QStringLiteral("KdAudioRecorderHelper"),
            QStringLiteral("KdWebcamRecorderHelper"),
            QStringLiteral("KdRecordDeviceConnector"),
            QStringLiteral("KdAudioDriverInstaller"),
            QStringLiteral("KAudioSettings"),
            QStringLiteral("KVideoSettings"),
            QStringLiteral("KComboboxExt"),
            QStringLiteral("KQuestionLabel"),
            QStringLiteral("KAudioRecordPreviewWidget"),
            QStringLiteral("KRecordAdvancedEvent"),
            QStringLiteral("KRecordVideoAdvancedExposeEvent"),
            QStringLiteral("KRecordVideoAdvancedClickEvent"),
            QStringLiteral("NotifyBeginPileInsetionEvent"),
            QStringLiteral("NotifyEndPileInsetionEvent"),
            QStringLiteral("KdRecordTranslation")};
}

/** What the module takes from the library that its host brings for engine and project. */
QStringList engineNames()
{
    return {QStringLiteral("KdTrackEvent"),
            QStringLiteral("KdGeneralEvent"),
            QStringLiteral("IKdProjectManager"),
            QStringLiteral("KdVBLMODEL::toFrameRate"),
            QStringLiteral("KdVBLMODEL::createAudioRecorder"),
            QStringLiteral("KdVBLMODEL::createWebcamRecorder")};
}

struct Symbol
{
    QChar kind;   ///< as nm prints it
    QString name; ///< demangled, with arguments
};

QString library(const char* name)
{
    return QStringLiteral(KD_PACKAGE_PREFIX "/" KD_PACKAGE_LIBDIR "/lib%1.so")
        .arg(QLatin1String(name));
}

QVector<Symbol> dynamicSymbols(const QString& file, const QString& which)
{
    const Command::Result result =
        Command::run(QStringLiteral("nm"), {QStringLiteral("-DC"), which, file});
    static const QRegularExpression line(QStringLiteral("^[0-9a-f ]*([A-Za-z]) (.*)$"));
    QVector<Symbol> symbols;
    const QStringList lines =
        QString::fromUtf8(result.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& text : lines) {
        const QRegularExpressionMatch match = line.match(text);
        if (match.hasMatch()) {
            symbols.append({match.captured(1).at(0), match.captured(2)});
        }
    }
    return symbols;
}

/** The class, namespace or function a symbol belongs to: "KdCountCtrl" of its thunks too. */
QString owner(const Symbol& symbol)
{
    static const QRegularExpression prefix(
        QStringLiteral("^(non-virtual thunk to|virtual thunk to|vtable for|VTT for|typeinfo for|"
                       "typeinfo name for|guard variable for) "));
    QString name = symbol.name;
    name.remove(prefix);
    return name;
}

bool belongsTo(const QString& name, const QStringList& owners)
{
    return std::any_of(owners.begin(), owners.end(), [&name](const QString& owner) {
        return name == owner || name.startsWith(owner + QLatin1String("::")) ||
               name.startsWith(owner + QLatin1Char('(')) ||
               name.startsWith(owner + QLatin1String("[abi:"));
    });
}

/** "std::move" of "T&& std::move<T>(T&)": Clang shows such instances, whatever they are of. */
bool isStandardTemplate(const Symbol& symbol)
{
#ifdef __clang__
    static const QRegularExpression innermost(QStringLiteral("<[^<>]*>|\\([^()]*\\)"));
    QString name = symbol.name;
    while (name.contains(innermost)) {
        name.remove(innermost);
    }
    return name.section(QLatin1Char(' '), -1).startsWith(QLatin1String("std::"));
#else
    Q_UNUSED(symbol)
    return false;
#endif
}

/** Inline functions of Qt and the standard library that were not inlined: every user has them. */
bool isInlineOfOthers(const Symbol& symbol)
{
    static const QRegularExpression others(QStringLiteral("\\b(Q[A-Z]|q[A-Z]|std::|__gnu)"));
    static const QRegularExpression ours(QStringLiteral("\\b(Kd?[A-Z]|IKd|Notify)"));
    const bool weak = QStringLiteral("WVu").contains(symbol.kind);
    return weak && (isStandardTemplate(symbol) || !owner(symbol).contains(ours)) &&
           (symbol.name.contains(others) || symbol.name.endsWith(QLatin1String(" for bool")));
}

/** Functions of the C library that every system has, and what std::mutex is made of. */
QStringList portableFunctions()
{
    QStringList names;
    for (const char* name : {"__cxa_atexit",
                             "__cxa_finalize",
                             "__stack_chk_fail",
                             "abort",
                             "memchr",
                             "memcmp",
                             "memcpy",
                             "memmove",
                             "memset",
                             "strcmp",
                             "strlen",
                             "strncmp",
                             "ceil",
                             "cos",
                             "exp",
                             "floor",
                             "fmod",
                             "hypot",
                             "llround",
                             "llroundf",
                             "log",
                             "log10",
                             "lround",
                             "lroundf",
                             "pow",
                             "round",
                             "sin",
                             "sqrt",
                             "pthread_mutex_lock",
                             "pthread_mutex_trylock",
                             "pthread_mutex_unlock"}) {
        names.append(QString::fromLatin1(name));
    }
    return names;
}

/** The linker's own marks. */
bool isMark(const Symbol& symbol)
{
    return symbol.name == QLatin1String("_edata") || symbol.name == QLatin1String("_end") ||
           symbol.name == QLatin1String("__bss_start") || symbol.name == QLatin1String("_init") ||
           symbol.name == QLatin1String("_fini");
}

/** What a sanitizer adds: its own marks, and the types of foreign objects that it looks at. */
bool isSanitizers(const Symbol& symbol)
{
#ifdef __SANITIZE_ADDRESS__
    return symbol.name.startsWith(QLatin1String("__odr_asan.")) ||
           (symbol.kind == QLatin1Char('V') && symbol.name.startsWith(QLatin1String("typeinfo ")));
#else
    Q_UNUSED(symbol)
    return false;
#endif
}

} // namespace

/** What the installed library shows to its hosts. */
class tst_ExportedSymbols : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theModuleExportsNothingButItsPublicClasses()
    {
        const QVector<Symbol> symbols =
            dynamicSymbols(library("KdRecord"), QStringLiteral("--defined-only"));
        QVERIFY(symbols.size() > 100);
        QStringList strangers;
        for (const Symbol& symbol : symbols) {
            if (!belongsTo(owner(symbol), publicNames()) && !isInlineOfOthers(symbol) &&
                !isMark(symbol) && !isSanitizers(symbol)) {
                strangers.append(symbol.name);
            }
        }
        QVERIFY2(strangers.isEmpty(), qPrintable(strangers.join(QLatin1Char('\n'))));
    }

    void theModuleExportsEachOfItsPublicClasses_data()
    {
        QTest::addColumn<QString>("name");
        const QStringList names = publicNames();
        for (const QString& name : names) {
            QTest::newRow(qUtf8Printable(name)) << name;
        }
    }

    void theModuleExportsEachOfItsPublicClasses()
    {
        QFETCH(QString, name);
        const QVector<Symbol> symbols =
            dynamicSymbols(library("KdRecord"), QStringLiteral("--defined-only"));
        QVERIFY(std::any_of(symbols.begin(), symbols.end(), [&name](const Symbol& symbol) {
            return symbol.kind == QLatin1Char('T') && belongsTo(owner(symbol), {name});
        }));
    }

    void theModuleCallsNothingThatOnlyPosixHas()
    {
        const QString version = QStringLiteral("@GLIBC_");
        QStringList strangers;
        for (const Symbol& symbol :
             dynamicSymbols(library("KdRecord"), QStringLiteral("--undefined-only"))) {
            const QString function = symbol.name.section(QLatin1Char('@'), 0, 0);
            if (symbol.name.contains(version) && !portableFunctions().contains(function)) {
                strangers.append(function);
            }
        }
        QVERIFY2(strangers.isEmpty(), qPrintable(strangers.join(QLatin1Char('\n'))));
    }

    // So that a host with an engine of its own knows what its library has to have.
    void theModuleTakesNothingElseFromTheLibraryOfTheEngine()
    {
        QSet<QString> offered;
        for (const Symbol& symbol :
             dynamicSymbols(library("KdVBLModel"), QStringLiteral("--defined-only"))) {
            if (!isInlineOfOthers(symbol)) {
                offered.insert(symbol.name);
            }
        }
        QStringList missing = engineNames();
        QStringList strangers;
        for (const Symbol& symbol :
             dynamicSymbols(library("KdRecord"), QStringLiteral("--undefined-only"))) {
            if (!offered.contains(symbol.name)) {
                continue;
            }
            const auto known =
                std::find_if(missing.begin(), missing.end(), [&symbol](const QString& name) {
                    return belongsTo(owner(symbol), {name});
                });
            if (known != missing.end()) {
                missing.erase(known);
            } else if (!belongsTo(owner(symbol), engineNames())) {
                strangers.append(symbol.name);
            }
        }
        QVERIFY2(strangers.isEmpty(), qPrintable(strangers.join(QLatin1Char('\n'))));
        QCOMPARE(missing, QStringList());
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_ExportedSymbols>(argc, argv);
}

#include "tst_ExportedSymbols.moc"
