#include <QMenu>
#include <QMenuBar>

#include "ui/mdiMain.hpp"

namespace Tamber {

QAction* mdiMain::AddItem(QMenu& menu, const char* name, const char* caption,
                          void (mdiMain::*handler)()) {
    QAction* item = menu.addAction(caption);
    item->setObjectName(name);
    connect(item, &QAction::triggered, this, handler);
    return item;
}

void mdiMain::AddSeparator(QMenu& menu, const char* name) {
    menu.addSeparator()->setObjectName(name);
}

void mdiMain::MakeMenus() {
    const auto addMenu = [this](const char* name, const char* caption) -> QMenu& {
        QMenu* menu = menuBar()->addMenu(caption);
        menu->setObjectName(name);
        return *menu;
    };

    QMenu& file = addMenu("File", "&File");
    AddItem(file, "FileLoad", "&Load", &mdiMain::FileLoad_Click);
    AddItem(file, "FileSave", "&Save", &mdiMain::FileSave_Click);
    AddSeparator(file, "FileS1");
    AddItem(file, "FileExit", "E&xit", &mdiMain::FileExit_Click);

    QMenu& buffer = addMenu("Buffer", "&Buffer");
    AddItem(buffer, "BufferView", "View", &mdiMain::BufferView_Click);
    AddSeparator(buffer, "BufferS1");
    AddItem(buffer, "BufferClearPM", "Clear Program Memory", &mdiMain::BufferClearPM_Click);
    AddItem(buffer, "BufferClearDM", "Clear Data Memory", &mdiMain::BufferClearDM_Click);
    AddItem(buffer, "BufferClearConfig", "Clear Configuration", &mdiMain::BufferClearConfig_Click);
    AddItem(buffer, "BufferClearAll", "Clear All", &mdiMain::BufferClearAll_Click);

    QMenu& device = addMenu("Device", "&Device");
    AddItem(device, "DeviceSelect", "Select", &mdiMain::DeviceSelect_Click);
    AddItem(device, "DeviceFunction", "Function", &mdiMain::DeviceFunction_Click)
        ->setShortcut(Qt::Key_F5);

    QMenu& options = addMenu("Options", "&Options");
    AddItem(options, "OptionsEditAuto", "Edit Auto", &mdiMain::OptionsEditAuto_Click);
    AddItem(options, "OptionsSettings", "Settings", &mdiMain::OptionsSettings_Click);

    QMenu& help = addMenu("Help", "&Help");
    AddItem(help, "HelpContents", "Contents", &mdiMain::HelpContents_Click)
        ->setShortcut(Qt::Key_F1);
    AddSeparator(help, "HelpS1");
    AddItem(help, "HelpAbout", "About", &mdiMain::HelpAbout_Click);
}

}  // namespace Tamber
