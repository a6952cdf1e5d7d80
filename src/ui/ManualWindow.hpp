#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QTextBrowser;

namespace Tamber {

/// The program's own manual: a separate window beside the main window, with the pages that are in
/// the program's resources. Alt+Left, Alt+Right and Alt+Home go back, forward and to the contents,
/// Ctrl+F and F3 search all pages, Ctrl++, Ctrl+- and Ctrl+0 change the letters' size, Escape and
/// Ctrl+W close the window.
class ManualWindow : public QWidget {
  public:
    /// Shows the manual, or brings it to the front if it is already on the screen, with `page`, a
    /// file name, open in it if one is given. It is hidden when `mainWindow` is closed and
    /// destroyed together with it.
    static void ShowBeside(QWidget& mainWindow, const char* page = nullptr);

    ManualWindow();

    void ShowContents();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void MakeControls();
    void MakeKeys();
    QPushButton* MakeButton(const char* name, const char* caption, const char* key);
    void UseReadableLinks();

    void Find();
    bool FindOnOtherPages(const QString& text);

    QPushButton* cmdBack = nullptr;
    QPushButton* cmdForward = nullptr;
    QPushButton* cmdContents = nullptr;
    QLabel* lblFind = nullptr;
    QLineEdit* txtFind = nullptr;
    QTextBrowser* txtManual = nullptr;
    QLabel* lblFound = nullptr;
};

}  // namespace Tamber
