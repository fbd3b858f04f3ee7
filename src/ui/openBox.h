#pragma once

#include <QMessageBox>

/// Opens a box with one button that says `text`, already translated. It runs no event loop, stands before
/// whatever is open and goes with the user's answer or with `window`. Main thread.
void openBox(QWidget* window, QMessageBox::Icon icon, const QString& text);
