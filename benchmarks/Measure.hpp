#pragma once

#include <functional>
#include <vector>

namespace Tamber::Bench {

/// What a piece of work took, in seconds.
struct Spent {
    double Wall = 0;
    double Processor = 0;  ///< of all threads of this process, in the system and outside it
};

/// A moment, by the steady clock and by the processor time used so far.
struct Moment {
    double Wall = 0;
    double Processor = 0;

    static Moment Now();
    Spent Since(const Moment& earlier) const;
};

double Median(std::vector<double> values);

/// What the rounds of one piece of work took.
class Rounds {
  public:
    void Add(const Spent& spent);

    /// The medians over all rounds.
    double Wall() const;
    double Processor() const;

    /// The shortest and the longest round.
    double Shortest() const;
    double Longest() const;

  private:
    std::vector<double> wall_;
    std::vector<double> processor_;
};

/// The same work done in two ways.
struct Comparison {
    Rounds Program;
    Rounds Yardstick;
};

using Work = std::function<Spent()>;

/// Does both by turns, `rounds` times each, after one round of each that does not count. The order
/// within a round changes from round to round.
Comparison Compare(int rounds, const Work& program, const Work& yardstick);

/// Binds this process to the processor core `core`, counted from 0 among those it may use; what it
/// starts from then on is bound too. False when there are fewer cores.
bool UseCore(int core);

}  // namespace Tamber::Bench
