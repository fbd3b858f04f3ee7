#pragma once

#include <QDialog>

struct ReportTexts;

/// The small window that tells of a crash, names the dump and offers to open its folder.
class CrashWindow : public QDialog
{
    Q_OBJECT

public:
    /// `dumpPath` is empty when there is no dump; `folder` is what the button opens.
    CrashWindow(const ReportTexts& texts, const QString& program, const QString& dumpPath,
                const QString& folder);
};
