#include "WindowBench.hpp"
#include "platform/qt/Contrast.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/ManualWindow.hpp"
#include "ui/StatusBar.hpp"

namespace Tamber {
namespace {

// A style with wide margins and large marks.
class WideStyle final : public QProxyStyle {
  public:
    WideStyle() : QProxyStyle("Fusion") {}
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override {
        const QRect rect = QProxyStyle::subElementRect(element, option, widget);
        return element == SE_LineEditContents ? rect.adjusted(9, 3, -9, -3) : rect;
    }
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        const bool mark = metric == PM_IndicatorWidth || metric == PM_ExclusiveIndicatorWidth ||
                          metric == PM_CheckBoxLabelSpacing || metric == PM_RadioButtonLabelSpacing;
        return QProxyStyle::pixelMetric(metric, option, widget) + (mark ? 15 : 0);
    }
};

// What the boxes look like, by their names.
std::map<QString, QImage> BoxesShown() {
    WindowBench bench;
    std::map<QString, QImage> shown;
    const auto look = [&](const QWidget& window) {
        for (QWidget* box : window.findChildren<QWidget*>(
                 QRegularExpression("^(txtIDLOCS|txtConfig|txtAddress|chk|optComm)")))
            shown[box->objectName()] = box->grab().toImage();
    };
    look(*bench.window);
    for (const char* item : {"DeviceFunction", "OptionsSettings", "ViewGoTo"})
        bench.InDialog(item, [&] { look(*bench.dialog); });
    return shown;
}

TEST(Appearance, BoxesShowTheSameUnderEveryStyle) {
    QApplication::setStyle("Fusion");
    const auto expected = BoxesShown();
    EXPECT_EQ(expected.size(), 11U);
    QApplication::setStyle(new WideStyle);
    EXPECT_EQ(BoxesShown(), expected);
    QApplication::setStyle("Fusion");
}

TEST(Appearance, LargeSystemFontEnlargesTheDesignAsFarAsTheScreenHasRoom) {
    for (const auto& [points, width] : {std::pair{11, 496}, {12, 661}, {40, 763}}) {
        SCOPED_TRACE(points);
        const UseFont system(points);
        WindowBench bench;
        EXPECT_EQ(bench.Dump()->toPlainText().count('\n'), 16);
        bench.InDialog("DeviceFunction", [&] { EXPECT_EQ(bench.dialog->width(), width); });
    }
}

// The highest contrast of any pixel to the one in the corner.
double ContrastIn(QWidget& widget, const QRect& part) {
    const QImage image = widget.grab(part).toImage();
    double highest = 1;
    for (int pixel = 0; pixel < image.width() * image.height(); ++pixel)
        highest = std::max(
            highest, Contrast(image.pixelColor(0, 0),
                              image.pixelColor(pixel % image.width(), pixel / image.width())));
    return highest;
}

TEST(Appearance, EverythingCanBeMadeOutOnADarkPalette) {
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(50, 50, 50));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Link, QColor(0, 0, 255));
    QApplication::setPalette(dark);
    WindowBench bench;
    auto* inactive = qobject_cast<QMdiSubWindow*>(bench.Find("frmEEPROM")->parentWidget());
    const QRect closeMark(inactive->width() - 18, 8, 9, 8);
    EXPECT_GE(ContrastIn(*inactive, closeMark), ReadableContrast);
    bench.InDialog("DeviceFunction", [&] {
        auto* frame = bench.Find("frameOption");
        frame->setEnabled(false);
        EXPECT_GE(ContrastIn(*frame, QRect(8, 0, 40, 12)), ReadableContrast);
        EXPECT_GE(Contrast(bench.Find("shpBG")->palette().color(QPalette::Window),
                           bench.Find("shpProgress")->palette().color(QPalette::Window)),
                  ReadableContrast);
    });
    ManualWindow manual;
    const auto* page = manual.findChild<QTextBrowser*>();
    QTextCursor link = page->document()->find("board");
    while (!link.isNull() && !link.charFormat().isAnchor())
        link = page->document()->find("board", link);
    EXPECT_GE(Contrast(link.charFormat().foreground().color(), dark.color(QPalette::Base)), 4.5);
    QApplication::setPalette(usual);
}

TEST(Appearance, DumpMadeWhileItsWindowHadNoInputIsDrawnAsActiveAfterwards) {
    WindowBench bench;
    QPalette palette;
    palette.setColor(QPalette::Inactive, QPalette::Text, Qt::green);
    bench.window->setPalette(palette);
    QWidget other;
    other.show();
    other.activateWindow();
    bench.window->setEnabled(false);
    bench.Choose("BufferClearAll");
    bench.window->setEnabled(true);
    const auto drawn = [&] { return bench.Dump()->grab(QRect(20, 5, 300, 200)).toImage(); };
    const QImage inactive = drawn();
    bench.window->activateWindow();
    Settle();
    EXPECT_NE(drawn(), inactive);
}

TEST(Appearance, ShortenedTextsKeepTheirEnds) {
    WindowBench bench;
    auto* bar = bench.Find<StatusBar>("sbar");
    bar->SetPanel(4, "File: /home/me/projects/blink/blink.hex");
    const auto* panel = bar->findChildren<QLabel*>().back();
    for (int width = 420; width < 450; ++width) {
        bench.window->resize(width, 400);
        Settle();
        EXPECT_TRUE(panel->text().contains(QChar(0x2026)) && panel->text().endsWith(".hex"));
        EXPECT_LE(panel->sizeHint().width(), panel->width());
    }
    QLabel label;
    label.setFixedWidth(100);
    ShowFitted(label, "Verifying Program Memory...   Error at 02AF");
    EXPECT_TRUE(label.text().endsWith("2AF"));
    EXPECT_LE(label.fontMetrics().horizontalAdvance(label.text()), 100);
    EXPECT_EQ(label.accessibleName(), "Verifying Program Memory...   Error at 02AF");
}

}  // namespace
}  // namespace Tamber
