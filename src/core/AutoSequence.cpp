#include "core/AutoSequence.hpp"

#include <vector>

#include "core/FieldReader.hpp"

namespace Tamber {

tl::expected<AutoSequence, FileFailure> LoadAutoSequence(const std::filesystem::path& file) {
    return ReadFields(file, "the Auto series",
                      "Put the file there; the single line 0 stands for an empty series.",
                      [](FieldReader& fields) {
                          AutoSequence sequence;
                          sequence.AutoCount = fields.ReadShort("the number of entries", INT16_MIN,
                                                                AutoSequence::LastEntry);
                          for (int entry = 1; entry <= sequence.AutoCount; ++entry)
                              sequence.Entries[static_cast<std::size_t>(entry)] =
                                  fields.ReadShort("a function code");
                          return sequence;
                      });
}

tl::expected<void, FileFailure> SaveAutoSequence(const std::filesystem::path& file,
                                                 const AutoSequence& sequence) {
    std::vector<int> numbers{sequence.AutoCount};
    numbers.insert(numbers.end(), sequence.Codes().begin(), sequence.Codes().end());
    return WriteNumbers(file, numbers,
                        "The series holds until the program ends; check the folder's permissions "
                        "and space.");
}

}  // namespace Tamber
