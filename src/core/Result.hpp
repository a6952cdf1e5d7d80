#pragma once

#include <utility>
#include <variant>

namespace Tamber {

/// What an operation gave: its value, or what went wrong. `Value` may be asked only when `Ok`,
/// `Failure` only when not.
template <typename ValueType, typename FailureType>
class [[nodiscard]] Result {
  public:
    static Result Success(ValueType value) {
        return Result(Outcome(std::in_place_index<0>, std::move(value)));
    }
    static Result Failed(FailureType failure) {
        return Result(Outcome(std::in_place_index<1>, std::move(failure)));
    }

    bool Ok() const { return outcome_.index() == 0; }
    const ValueType& Value() const { return std::get<0>(outcome_); }
    ValueType& Value() { return std::get<0>(outcome_); }
    const FailureType& Failure() const { return std::get<1>(outcome_); }

  private:
    using Outcome = std::variant<ValueType, FailureType>;
    explicit Result(Outcome outcome) : outcome_(std::move(outcome)) {}

    Outcome outcome_;
};

}  // namespace Tamber
