#pragma once

// What the fields of a link and of the node that it enters say together: its word and its scores.

#include <string>
#include <vector>

#include "formats/field_keys.h"
#include "formats/slf_file.h"
#include "words/total_formula.h"
#include "words/word_lattice.h"

namespace quorbel {

/// What the logarithm of the probability 0 is written as: as good as impossible, yet far above what
/// the viewer's search counts as out of reach.
inline constexpr double kLogOfZero = -1e6;

/// Whether the words of the file are in the form that the viewer takes: XML fragments, or some in
/// double quotes beside them, all on links.
bool isDialectFile(const SlfFile& file);

/// Makes the links of one file. A word and scores on a node belong to the links that enter it; a
/// link's own word counts more, and scores of the same name add up.
class LinkFields {
 public:
  /// `lattice` gets the score names of the file, and the scales and penalty that make the totals.
  /// Both outlive this object.
  LinkFields(const SlfFile& file, WordLattice& lattice);

  /// Gives `link` its word and scores from the fields of `record` (null: none) and of `node`.
  /// Returns "" on success, else what is wrong with which line.
  std::string fill(WordLink& link, const SlfRecord* record, const SlfRecord& node);

 private:
  std::string addFields(WordLink& link, const SlfRecord& record, bool isNode);
  std::string addScore(WordLink& link, const SlfField& field, const FieldMeaning& meaning,
                       bool isNode);
  void setScore(std::vector<NamedScore>& scores, int name, double value, bool isAdded);
  void addAttribute(std::vector<WordAttribute>& attributes, int index, const std::string& value);
  std::string logScore(const SlfField& field, double& value) const;
  void setWord(Word& word, const SlfField& field) const;
  void takeTotal(WordLink& link) const;

  const SlfFile& m_File;
  WordLattice& m_Lattice;
  const FieldKeys m_Keys;
  const double m_LogOfBase;  ///< factor from the file's logarithms to natural ones
  const TotalFormula m_Formula;
  const int m_Total;      ///< index of the total among the score names, or FieldMeaning::kNone
  const int m_Unshifted;  ///< the same of the one that the viewer does not see as its total
  std::vector<std::size_t> m_ScorePlace;      ///< for each name, where a link last had it
  std::vector<std::size_t> m_AttributePlace;  ///< the same for attributes
};

}  // namespace quorbel
