#include "ui/openBox.h"

void openBox(QWidget* window, QMessageBox::Icon icon, const QString& text)
{
    auto* box = new QMessageBox(icon, QStringLiteral("Lumivar"), text, QMessageBox::Ok, window);
    box->setTextFormat(Qt::PlainText); // paths and names of files are in it
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
}
