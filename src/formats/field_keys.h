#pragma once

// What the keys of a lattice file mean, and under which names their values go on.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "formats/slf_file.h"

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
  static constexpr int kNone = -1;

  Kind kind = Kind::Other;
  int score = kNone;      ///< index of its name as a score, when some field of this key is one
  int attribute = kNone;  ///< the same as an attribute
};

/// The meanings of all keys of one file. HTK's long and short keys are the same field, and go on
/// under the short one: "acoustic" is "a". Different fields have different names, which do not
/// depend on the order of the file.
class FieldKeys {
 public:
  /// `isDialect`: the file is one that this program or the viewer may have written, whose "TOTAL",
  /// "unshifted" and "post" are the scores of that name. `file` outlives this object.
  FieldKeys(const SlfFile& file, bool isDialect);

  /// The meaning of a key of the file.
  const FieldMeaning& of(std::string_view key) const { return m_Known.at(key); }

  /// The names of scores and of attributes, in byte order.
  const std::vector<std::string>& scoreNames() const { return m_ScoreNames; }
  const std::vector<std::string>& attributeNames() const { return m_AttributeNames; }

 private:
  void nameKeys(bool (*isTaken)(const std::string&), int FieldMeaning::*index,
                std::vector<std::string>& names);

  std::unordered_map<std::string_view, FieldMeaning> m_Known;
  std::vector<std::string> m_ScoreNames;
  std::vector<std::string> m_AttributeNames;
};

}  // namespace quorbel
