#include "platform/qt/HexFileDialog.hpp"

#include <QChildEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QTreeView>

#include "core/TextFile.hpp"
#include "core/Utf8.hpp"
#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/QtMessageBoxes.hpp"
#include "platform/qt/RecentFiles.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr char Filter[] = "Hex (*.hex)";

// Names of files can look like markup and hold line breaks.
class PlainNames final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override {
        return OutsideText(QStyledItemDelegate::displayText(value, locale).toStdString());
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const std::string text = index.data(Qt::ToolTipRole).toString().toStdString();
        QToolTip::showText(event->globalPos(), OutsideToolTip(text), view);
        return true;
    }
};

}  // namespace

HexFileDialog::HexFileDialog(Purpose purpose, const std::filesystem::path& folder, QWidget* parent)
    : QFileDialog(parent), purpose_(purpose), folder_(folder), sidebarBefore_(sidebarUrls()) {
    setOptions(DontUseNativeDialog | DontConfirmOverwrite);
    setNameFilter(Filter);
    setDirectory(folder_.Name());
    if (purpose == Purpose::Open) {
        setWindowTitle("Load");
        setFileMode(ExistingFile);
    } else {
        setWindowTitle("Save");
        setAcceptMode(AcceptSave);
        setFileMode(AnyFile);
        setDefaultSuffix("hex");
    }
    ShowNamesPlainly();
    AddRecentFiles();
    FitOnScreen();
}

HexFileDialog::~HexFileDialog() {
    setSidebarUrls(sidebarBefore_);
}

void HexFileDialog::ShowNamesPlainly() {
    auto* names = new PlainNames(this);
    setItemDelegate(names);
    if (auto* sidebar = findChild<QListView*>("sidebar"))
        sidebar->setItemDelegate(names);
}

void HexFileDialog::AddRecentFiles() {
    QList<QUrl> urls = sidebarBefore_;
    for (const QString& folder : RecentFolders())
        if (const QUrl url = QUrl::fromLocalFile(folder); !urls.contains(url))
            urls.append(url);
    setSidebarUrls(urls);

    const QStringList files = RecentFiles();
    auto* grid = qobject_cast<QGridLayout*>(layout());
    if (!grid || files.isEmpty())
        return;
    auto* list = new QComboBox(this);
    list->setObjectName("lstRecent");
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setItemDelegate(new PlainNames(list));
    list->setPlaceholderText(QString());
    list->addItems(files);
    list->setCurrentIndex(-1);
    connect(list, &QComboBox::activated, this,
            [this, files](int row) { selectFile(files.at(row)); });
    auto* label = new QLabel("&Recent files:", this);
    label->setBuddy(list);
    const int row = grid->rowCount();
    grid->addWidget(label, row, 0);
    grid->addWidget(list, row, 1);
}

void HexFileDialog::FitOnScreen() {
    if (auto* tree = findChild<QTreeView*>("treeView")) {
        tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    constexpr QSize frame(16, 48);
    resize(size().boundedTo(screen()->availableSize() - frame));
}

std::filesystem::path HexFileDialog::Chosen() const {
    const QStringList files = selectedFiles();
    return files.isEmpty() ? std::filesystem::path() : folder_.Real(files.first());
}

void HexFileDialog::accept() {
    const std::filesystem::path file = Chosen();
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored) || (Usable(file) && MayBeReplaced(file)))
        QFileDialog::accept();
}

bool HexFileDialog::Usable(const std::filesystem::path& file) {
    const auto checked = purpose_ == Purpose::Open ? CheckReadable(file) : CheckReplaceable(file);
    if (!checked)
        QtMessageBoxes().Show(VisibleText(file.filename().string()) + " cannot be " +
                                  (purpose_ == Purpose::Open ? "loaded" : "saved") + ": " +
                                  checked.error(),
                              windowTitle().toStdString(), BoxIcon::Critical);
    return checked.has_value();
}

bool HexFileDialog::MayBeReplaced(const std::filesystem::path& file) {
    std::error_code ignored;
    if (purpose_ == Purpose::Open || !std::filesystem::exists(file, ignored))
        return true;
    QMessageBox box(
        QMessageBox::Warning, windowTitle(),
        OutsideText(file.filename().string()) + " already exists.\nDo you want to replace it?",
        QMessageBox::Yes | QMessageBox::No, this);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return ExecuteModal(box) == QMessageBox::Yes;
}

// The dialog's own boxes take a name for markup that looks like it.
void HexFileDialog::childEvent(QChildEvent* event) {
    QFileDialog::childEvent(event);
    if (auto* box = qobject_cast<QMessageBox*>(event->child()); box && event->polished())
        box->setTextFormat(Qt::PlainText);
}

}  // namespace Tamber
