#pragma once

// Small lattices for the window's tests.

#include <string>

namespace quorbel {

/// Two words, one after the other.
inline const std::string kTwoWords =
    "N=3 L=2\n"
    "I=0 t=0\nI=1 t=1\nI=2 t=2\n"
    "J=0 S=0 E=1 W=<w in='good' out='gut'/> a=-10\n"
    "J=1 S=1 E=2 W=<w in='morning' out='Morgen'/> a=-20\n";

/// Two ways from the first node to the last. By "ac", the score it is opened with, the way over
/// node 1 costs 30.25 and that over node 2 costs 35.5; by "lm" 7 and 2.
inline const std::string kTwoWays =
    "N=4 L=4\n"
    "I=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=4\n"
    "J=0 S=0 E=1 W=<w in='a' out='A'/> ac=-10 lm=-3\n"
    "J=1 S=0 E=2 W=<w in='b' out='B'/> ac=-5.5 lm=-1\n"
    "J=2 S=1 E=3 W=<w in='c' out='C'/> ac=-20.25 lm=-4\n"
    "J=3 S=2 E=3 W=<w in='d' out='D'/> ac=-30 lm=-1\n";

}  // namespace quorbel
