#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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
    std::string Subject = {};  ///< what it is about; not shown
    std::string Text = {};  ///< plain text without line breaks, which may hold names from outside
    std::optional<NoticeAction> Action = {};
    std::function<void()> Go = {};  ///< shows the place that it is about; empty: there is none
};

/// Where the parts of the program leave their notices. Those about one subject come and go
/// together.
class Notices {
  public:
    virtual ~Notices() = default;

    /// Adds notices in the place of all earlier ones about `subject`, which is theirs. Of equally
    /// grave ones the first is shown first.
    virtual void Replace(const std::string& subject, std::vector<Notice> notices) = 0;

    /// Adds a notice, in the place of all earlier ones about the same subject.
    void Show(Notice notice) {
        const std::string subject = notice.Subject;
        Replace(subject, {std::move(notice)});
    }

    /// Takes away what there is about `subject`.
    void Withdraw(const std::string& subject) { Replace(subject, {}); }
};

}  // namespace Tamber
