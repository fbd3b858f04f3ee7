#pragma once

#include <QLocale>
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

    /// Shows what the user chose; without a choice, or without a catalogue for it, the system's language,
    /// else English. At the start before the first form is built, and when the system's locale has changed.
    /// Stores nothing.
    void loadSavedLanguage(const QString& systemLocale = QLocale::system().name());
    /// The user's choice: shown and stored. Without a compiled-in catalogue nothing changes.
    void switchLanguage(const QString& language);
    /// What shows; empty before the first call of one of the above.
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
    bool show(const QString& language);

    QTranslator m_translator;
    QString m_currentLanguage;
    QVector<QPair<QString, QSharedPointer<QTranslator>>> m_fileTranslators; ///< by language code
};
