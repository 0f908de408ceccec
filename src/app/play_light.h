#pragma once

// Which nodes light up while sound plays.

namespace quorbel {

/// The sound's beginning lights up nothing, so that a stopped cursor leaves no mark at the start.
inline constexpr double kFirstPlayPosition = 0.01;
/// How far ahead of the play position nodes light up, as a fraction of the utterance.
inline constexpr double kPlayAhead = 0.08;

/// Whether any node lights up at this play position, a fraction of the utterance.
inline bool isAnyLit(double position) { return position >= kFirstPlayPosition; }

/// Whether a node of this time lights up at a play position where any does.
inline bool isLit(double time, double position) {
  return position < time && time < position + kPlayAhead;
}

}  // namespace quorbel
