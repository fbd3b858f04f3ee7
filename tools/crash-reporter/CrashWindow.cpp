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
/// The look of the program's own windows.
constexpr char kDarkStyle[] = R"(
    QWidget {
        background-color: #222222;
        color: #d4d4d4;
        font-size: 14px;
        selection-background-color: #ffd908;
        selection-color: #222222;
    }
    QPushButton {
        background-color: #333333;
        border: 1px solid #4a4a4a;
        border-radius: 6px;
        padding: 6px 22px;
        outline: none;
    }
    QPushButton:hover { background-color: #3d3d3d; }
    QPushButton:pressed { background-color: #2b2b2b; }
    QPushButton:focus { border-color: #ffd908; }
    QPushButton#closeButton { background-color: #ffd908; border: 2px solid #ffd908; padding: 5px 21px; color: #222222; }
    QPushButton#closeButton:hover { background-color: #ffe34d; border-color: #ffe34d; }
    QPushButton#closeButton:pressed { background-color: #d9b800; border-color: #d9b800; }
    QPushButton#closeButton:focus { border-color: #ffffff; }
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
    dump->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    for (QLabel* label : {message, dump}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    auto* openFolder = new QPushButton(texts.openFolder);
    auto* closeButton = new QPushButton(texts.close);
    closeButton->setDefault(true);
    closeButton->setObjectName(QStringLiteral("closeButton"));
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
    closeButton->setFocus();
}
