#include "support/FakeDesktop.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "core/HexText.hpp"

namespace Tamber {

class FakeTimer final : public WindowTimer {
  public:
    explicit FakeTimer(FakeDesktop& desktop) : desktop_(desktop) {
        desktop_.timers_.push_back(this);
    }
    ~FakeTimer() override { std::erase(desktop_.timers_, this); }

    void SetInterval(std::chrono::milliseconds interval) override {
        interval_ = interval;
        if (due_)
            due_ = desktop_.now + interval_;
    }
    void Enable() override {
        if (!due_)
            due_ = desktop_.now + interval_;
    }
    void Disable() override { due_.reset(); }

    std::optional<FakeDesktop::Time> Due() const { return due_; }

    void TickIfDue() {
        if (!due_ || *due_ > desktop_.now)
            return;
        desktop_.record.push_back("tick " + std::to_string(interval_.count()));
        due_ = desktop_.now + interval_;
        Tick();
    }

  private:
    FakeDesktop& desktop_;
    std::chrono::milliseconds interval_{1000};
    std::optional<FakeDesktop::Time> due_;
};

class FakeSerialControl final : public SerialControl {
  public:
    explicit FakeSerialControl(FakeDesktop& desktop) : desktop_(desktop) {}

    tl::expected<void, std::string> PortOpen(const std::filesystem::path& path) override {
        desktop_.openedPath = path;
        desktop_.record.push_back("open " + path.filename().string());
        if (desktop_.portFailure)
            return tl::unexpected(*desktop_.portFailure);
        return {};
    }
    void Output(std::span<const std::uint8_t> bytes) override {
        desktop_.record.push_back("> " + HexBytes(bytes));
        if (desktop_.board)
            desktop_.board->Receive(bytes);
    }
    int InBufferCount() override { return static_cast<int>(desktop_.received.size()); }
    void TakeIn() override {
        if (desktop_.board)
            desktop_.board->Take(desktop_.received);
    }
    void Input(std::vector<std::uint8_t>& bytes) override {
        bytes = desktop_.received;
        desktop_.received.clear();
    }
    bool PortLost() const override { return desktop_.portLost; }

  private:
    FakeDesktop& desktop_;
};

class FakeFileDialog final : public FileDialog {
  public:
    explicit FakeFileDialog(FakeDesktop& desktop) : desktop_(desktop) {}

    bool ShowOpen() override { return Choose(); }
    bool ShowSave() override { return Choose(); }
    void SetFileName(const std::filesystem::path& file) override { fileName_ = file; }
    std::filesystem::path FileName() const override { return fileName_; }

  private:
    bool Choose() {
        if (desktop_.chosenFile)
            fileName_ = *desktop_.chosenFile;
        return desktop_.chosenFile.has_value();
    }

    FakeDesktop& desktop_;
    std::filesystem::path fileName_;
};

std::unique_ptr<WindowTimer> FakeDesktop::NewTimer() {
    return std::make_unique<FakeTimer>(*this);
}

std::unique_ptr<SerialControl> FakeDesktop::NewSerialControl() {
    return std::make_unique<FakeSerialControl>(*this);
}

std::unique_ptr<FileDialog> FakeDesktop::NewFileDialog() {
    return std::make_unique<FakeFileDialog>(*this);
}

void FakeDesktop::Show(const std::string& text, const std::string& title, BoxIcon icon) {
    record.push_back("box [" + title + "] " + text +
                     (icon == BoxIcon::Critical ? " (critical)" : ""));
    if (whileBoxIsOpen)
        whileBoxIsOpen();
}

void FakeDesktop::Start(const std::string& program, const std::vector<std::string>& arguments,
                        std::function<void()> failed) {
    record.push_back("start " + program);
    for (const std::string& argument : arguments)
        record.back() += " " + argument;
    failViewer = std::move(failed);
}

std::optional<FakeDesktop::Time> FakeDesktop::NextDue() const {
    std::optional<Time> next = board ? board->NextDue() : std::nullopt;
    for (const FakeTimer* timer : timers_)
        if (const auto due = timer->Due(); due && (!next || *due < *next))
            next = due;
    return next;
}

void FakeDesktop::DeliverEvents() {
    if (intrude)
        intrude();
    const auto next = NextDue();
    if (!next) {
        std::fputs("The program waits for something that will never come.\n", stderr);
        std::abort();
    }
    now = std::max(now, *next);
    if (board)
        board->Take(received);
    for (FakeTimer* timer : std::vector(timers_))
        timer->TickIfDue();
}

std::string HexBytes(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty())
            text += ' ';
        AppendHexByte(text, byte);
    }
    return text;
}

}  // namespace Tamber
