#pragma once

#include "measure.h"

// Medians over all turns. Other programs slow both sides of one pair down alike, so it is the ratio of a pair
// that tells something: `ratio` is the median of those, not one median divided by the other.
struct Figures {
    double ours = 0;   // milliseconds
    double plain = 0;  // milliseconds; 0 where there is no plain side
    double ratio = 0;
    double oursLeast = 0;  // of all turns, milliseconds; what others take away is least in those
    double plainLeast = 0;
};

// Which clock the turns are timed by. What a person waits for is the wall's; on a busy machine the longer
// side of a pair is interrupted more often than the shorter one, and only the processor's tells a fair ratio.
// That one does not see the waiting for the disk, nor what another process does for us.
enum class Clock { Wall, Processor };
void timeBy(Clock clock);

struct Turns {
    std::string name;
    int pairs;
    int runs;
};
using MakeSide = std::function<std::unique_ptr<Side>()>;

// Ours and the plain side in turns, after one turn each that is not counted. Ends the program where they do
// not come to the same result. `plain` may be empty.
Figures takeTurns(const Turns& turns, const MakeSide& ours, const MakeSide& plain);

template <class Place>
Figures takeTurns(const MeasureOn<Place>& measure, Place& shop) {
    const MakeSide ours = [&] { return measure.ours(shop); };
    const MakeSide plain = [&] { return measure.plain(shop); };
    return takeTurns({measure.name, measure.pairs, measure.runs}, ours, measure.plain ? plain : MakeSide());
}

// Tells where two answers part, and ends the program there.
void checkEqual(const std::string& what, const Lines& ours, const Lines& plain);
