#include "CrashWindow.h"

#include "ReportTexts.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int kMinWidth = 420;
constexpr char kDarkStyle[] = R"(
    QWidget { background: #202124; color: #e8eaed; font-size: 14px; }
    QPushButton { background: #3c4043; border: none; border-radius: 4px; padding: 8px 20px; }
    QPushButton:hover { background: #4d5155; }
    QPushButton:focus { border: 1px solid #8ab4f8; }
)";

} // namespace

CrashWindow::CrashWindow(const ReportTexts& texts, const QString& program, const QString& dumpPath,
                         const QString& folder)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(texts.title);
    setStyleSheet(QLatin1String(kDarkStyle));
    setMinimumWidth(kMinWidth);

    auto* message = new QLabel(texts.message.arg(program));
    auto* dump = new QLabel(dumpPath.isEmpty() ? texts.noDump : texts.dump.arg(dumpPath));
    dump->setTextFormat(Qt::PlainText);
    dump->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    for (QLabel* label : {message, dump})
        label->setWordWrap(true);
    auto* openFolder = new QPushButton(texts.openFolder);
    auto* closeButton = new QPushButton(texts.close);
    closeButton->setDefault(true);
    connect(openFolder, &QPushButton::clicked, this,
            [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(openFolder);
    buttons->addWidget(closeButton);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(14);
    layout->addWidget(message);
    layout->addWidget(dump);
    layout->addStretch();
    layout->addLayout(buttons);
}
