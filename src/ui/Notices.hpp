#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Tamber {

/// From the least grave to the gravest.
enum class NoticeSeverity { Note, Warning, Failure };

/// What the user can do about a notice. It leaves the notice standing unless Run withdraws it.
struct NoticeAction {
    std::string Caption;  ///< plain text, a word or two
    std::function<void()> Run;
};

/// Something that the user should know and that is not worth a box: nothing waits for it.
struct Notice {
    NoticeSeverity Severity = NoticeSeverity::Note;
    std::string Subject;  ///< what it is about; not shown
    std::string Text;     ///< plain text without line breaks, which may hold names from outside
    std::optional<NoticeAction> Action = {};
};

/// Where the parts of the program leave their notices. At most one stands for each subject.
class Notices {
  public:
    virtual ~Notices() = default;

    /// Adds a notice, in the place of an earlier one about the same subject.
    virtual void Show(Notice notice) = 0;

    /// Takes away the notice about `subject`, if there is one.
    virtual void Withdraw(std::string_view subject) = 0;
};

}  // namespace Tamber
