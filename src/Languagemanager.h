#pragma once

#include <QObject>
#include <QPair>
#include <QSharedPointer>
#include <QStringList>
#include <QTranslator>
#include <QVector>

/// The single owner of the application's translator. The source language of every text is Chinese.
/// Also mirrors the layout for languages written from right to left. Main thread.
class LanguageManager : public QObject
{
    Q_OBJECT

public:
    static LanguageManager* instance();

    /// Once at the start, before the first form is built: the stored language, else the system's.
    void loadSavedLanguage();
    /// Loads the compiled-in catalogue and remembers the choice. A language without a catalogue leaves the
    /// source language on screen and the stored choice as it was.
    void switchLanguage(const QString& language);
    QString currentLanguage() const { return m_currentLanguage; }

    /// For catalogues that stand as files in the folder "languages" beside the program.
    void installDefaultLanguage();
    void installENTranslator();
    /// The files in the folder "languages".
    QStringList availableLanguages() const;

signals:
    void languageChanged(QString newLanguage);

private:
    explicit LanguageManager(QObject* parent = nullptr);

    QTranslator m_translator;
    QString m_currentLanguage;
    QVector<QPair<QString, QSharedPointer<QTranslator>>> m_fileTranslators; ///< by language code
};
