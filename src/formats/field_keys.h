#pragma once

// What the keys of a lattice file mean, and under which names their values go on.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quorbel {

/// What a field of a node or link is.
struct FieldMeaning {
  enum class Kind {
    Word,
    Time,
    LogScore,  ///< a log likelihood in the base that the header names
    Variant,   ///< which pronunciation of the word
    Dropped,   ///< computed anew
    Other      ///< a score when its value is a number, else an attribute of the word
  };
  Kind kind = Kind::Other;
  std::string scoreName;
  std::string attributeName;
  int score = -1;  ///< index of `scoreName` once `FieldKeys::scoreOf` was asked
};

/// The meanings of all keys of one file. HTK's long and short keys are the same field, and go on
/// under the short one: "acoustic" is "a".
class FieldKeys {
 public:
  /// `isDialect`: the file is one that this program or the viewer may have written, whose "TOTAL"
  /// and "post" are the scores of that name.
  explicit FieldKeys(bool isDialect) : m_IsDialect(isDialect) {}

  FieldMeaning& of(std::string_view key);

  /// The index of a field's score in `scoreNames`, which it joins when it is not there yet.
  int scoreOf(FieldMeaning& meaning, std::vector<std::string>& scoreNames) const;

 private:
  const bool m_IsDialect;
  std::unordered_map<std::string_view, FieldMeaning> m_Known;
};

/// The name under which the viewer shows the score `key`: itself, or with "x_" before it when the
/// viewer's reader takes that key for something else, when it sorts before "TOTAL", or when it is
/// that name or "post". What cannot stand in such a name becomes "_".
std::string viewerScoreName(std::string_view key);

/// The name of an attribute for the field `key`, by the same rules; the attributes that a word's
/// element has anyhow (see isFreeAttribute) count as taken.
std::string attributeNameOf(std::string_view key);

}  // namespace quorbel
