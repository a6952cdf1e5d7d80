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
    const QFont usual = QApplication::font();
    for (const auto& [points, width] : {std::pair{11, 496}, {12, 661}, {40, 763}}) {
        SCOPED_TRACE(points);
        QApplication::setFont(QFont(usual.family(), points));
        WindowBench bench;
        EXPECT_EQ(bench.Dump()->toPlainText().count('\n'), 16);
        for (const char* view : {"frmBuffer", "frmEEPROM", "frmConfig"})
            ExpectNothingCutOff(*bench.Find(view));
        for (const char* item : {"DeviceFunction", "OptionsEditAuto", "DeviceSelect",
                                 "OptionsSettings", "ViewGoTo", "HelpAbout"})
            bench.InDialog(item, [&] {
                ExpectNothingCutOff(*bench.dialog);
                const QRect screen = bench.window->screen()->availableGeometry();
                EXPECT_TRUE(screen.contains(bench.dialog->geometry())) << item;
                EXPECT_TRUE(item != std::string("DeviceFunction") ||
                            bench.dialog->width() == width);
            });
    }
    QApplication::setFont(usual);
}

double HighestContrast(const QImage& image) {
    QColor lightest = Qt::black;
    QColor darkest = Qt::white;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (Contrast(pixel, Qt::black) > Contrast(lightest, Qt::black))
                lightest = pixel;
            if (Contrast(pixel, Qt::white) > Contrast(darkest, Qt::white))
                darkest = pixel;
        }
    return Contrast(lightest, darkest);
}

TEST(Appearance, EverythingCanBeMadeOutOnADarkPalette) {
    EXPECT_DOUBLE_EQ(Contrast(Qt::white, Qt::black), 21);
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(50, 50, 50));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Link, QColor(0, 0, 255));
    QApplication::setPalette(dark);
    WindowBench bench;
    auto* inactive = qobject_cast<QMdiSubWindow*>(bench.Find("frmEEPROM")->parentWidget());
    const QImage closeMark = inactive->grab(QRect(inactive->width() - 18, 8, 9, 8)).toImage();
    EXPECT_GE(HighestContrast(closeMark), ReadableContrast);
    bench.InDialog("DeviceFunction", [&] {
        auto* frame = bench.Find("frameOption");
        frame->setEnabled(false);
        EXPECT_GE(HighestContrast(frame->grab(QRect(8, 0, 40, 12)).toImage()), ReadableContrast);
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
