#pragma once

#include <QObject>
#include <QString>
#include <QTranslator>
#include <QVector>

#include <memory>

/** The languages that Studio can speak; English is in the sources. GUI thread. */
class StudioLanguages : public QObject
{
    Q_OBJECT

public:
    struct Language
    {
        QString code; ///< "en", "de", "zh_CN"
        QString name; ///< as its speakers call it
    };

    explicit StudioLanguages(QObject* parent = nullptr);
    ~StudioLanguages() override;

    static QVector<Language> all();

    /**
     * Changes all texts that are shown, Qt's own too where they are installed.
     * @return false for an unknown code, which changes nothing, and when the texts are missing
     */
    bool use(const QString& code);
    QString code() const { return m_code; }

private:
    QString m_code = QStringLiteral("en");
    std::unique_ptr<QTranslator> m_qtTexts;
};
