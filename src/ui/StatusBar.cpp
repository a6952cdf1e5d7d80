#include "ui/StatusBar.hpp"

#include <QLabel>
#include <QResizeEvent>

#include "platform/qt/WindowDesign.hpp"

namespace Tamber {

class StatusPanel : public QLabel {
  public:
    explicit StatusPanel(QWidget* parent) : QLabel(parent) {
        setTextFormat(Qt::PlainText);
        setFont(SansSerifFont());
        setFrameStyle(QFrame::Panel | QFrame::Sunken);
        setIndent(Pixels(60));
    }

    void SetWhole(const QString& text) {
        whole_ = text;
        ShowWhatFits();
    }

    QString Whole() const { return whole_; }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        ShowWhatFits();
    }

  private:
    void ShowWhatFits() {
        setText(fontMetrics().elidedText(whole_, Qt::ElideMiddle,
                                         contentsRect().width() - 2 * indent()));
        setAccessibleName(text() == whole_ ? QString() : whole_);
    }

    QString whole_;
};

namespace {

struct PanelDesign {
    const char* text;
    const char* toolTip;
    int width;  // twips
};

constexpr std::array<PanelDesign, 4> Designs{{
    {"COM", "Communication Port", 700},
    {"Device:", "Selected Device", 2000},
    {"Size:", "Memory Size of Selected Device", 1440},
    {"File:", "File Name", 5000},
}};

}  // namespace

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent) {
    setObjectName("sbar");
    for (std::size_t index = 0; index < Designs.size(); ++index) {
        auto* panel = new StatusPanel(this);
        const bool last = index + 1 == Designs.size();
        panel->setMinimumWidth(last ? 1 : Pixels(Designs[index].width));
        if (!last)
            panel->setMaximumWidth(Pixels(Designs[index].width));
        else  // the file panel takes the rest of the width, so that long paths can be read
            panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        panel->setToolTip(Designs[index].toolTip);
        addWidget(panel, last ? 1 : 0);
        panels_[index] = panel;
        SetPanel(static_cast<int>(index) + 1, Designs[index].text);
    }
}

void StatusBar::SetPanel(int panel, const QString& text) {
    panels_.at(static_cast<std::size_t>(panel - 1))->SetWhole(text);
}

QString StatusBar::Panel(int panel) const {
    return panels_.at(static_cast<std::size_t>(panel - 1))->Whole();
}

}  // namespace Tamber
