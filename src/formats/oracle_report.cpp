#include "formats/oracle_report.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "lattice/number_text.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// The text at the right of a column, behind two blanks.
std::string column(const std::string& text, std::size_t width) {
  return "  " + std::string(width - std::min(width, text.size()), ' ') + text;
}

constexpr std::array<const char*, 10> kColumns = {
    "words", "best WER", "sub", "del", "ins", "oracle WER", "sub", "del", "ins", "links/s"};

std::string tableLine(const std::array<std::string, kColumns.size()>& fields,
                      const std::string& name) {
  constexpr std::size_t kNarrowest = 5;
  std::string line;
  for (std::size_t i = 0; i < fields.size(); ++i)
    line += column(fields[i], std::max(kNarrowest, std::string(kColumns[i]).size()));
  return line.substr(2) + "  " + name + "\n";
}

std::string rateOf(const EditCounts& counts, int words) {
  if (words == 0) return "-";
  constexpr double kPercent = 100.0;
  constexpr int kDigits = 2;
  std::array<char, 32> text;
  const double rate = kPercent * counts.total() / words;
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), rate,
                                     std::chars_format::fixed, kDigits)
                           .ptr};
}

std::string linksPerSecond(const ErrorCounts& counts, const char* otherwise) {
  return counts.seconds > 0.0 ? formatNumber(counts.links / counts.seconds) : otherwise;
}

void addEdits(EditCounts& all, const EditCounts& one) {
  all.substitutions += one.substitutions;
  all.deletions += one.deletions;
  all.insertions += one.insertions;
}

/// The words of a path by where they stand: beside each word of the reference, and, inserted,
/// before each and behind the last.
struct PlacedWords {
  std::vector<std::string> beside;
  std::vector<std::vector<std::string>> before;
};

const std::string kMissing = "***";

PlacedWords placed(const WordLattice& lattice, const Alignment& alignment, std::size_t count) {
  PlacedWords words{std::vector<std::string>(count, kMissing),
                    std::vector<std::vector<std::string>>(count + 1)};
  std::size_t next = 0;
  for (const AlignedPlace& place : alignment.places) {
    const std::string word =
        place.link < 0 ? kMissing : withControlPictures(lattice.links[slot(place.link)].word.text);
    if (place.reference < 0)
      words.before[next].push_back(word);
    else
      words.beside[next++] = word;
  }
  return words;
}

/// How many characters a UTF-8 text has.
std::size_t lengthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
  }));
}

/// Lines that grow side by side, a word at a time.
class AlignedLines {
 public:
  void add(const std::array<std::string, 3>& words) {
    std::size_t width = 0;
    for (const std::string& word : words) width = std::max(width, lengthOf(word));
    for (std::size_t i = 0; i < words.size(); ++i) {
      m_Lines[i] += std::string(m_Blanks[i] + 1, ' ') + words[i];
      m_Blanks[i] = width - lengthOf(words[i]);
    }
  }

  std::string text() const {
    return "  reference:" + m_Lines[0] + "\n  best:     " + m_Lines[1] +
           "\n  oracle:   " + m_Lines[2] + "\n";
  }

 private:
  std::array<std::string, 3> m_Lines;
  std::array<std::size_t, 3> m_Blanks = {};  ///< that are wanting to the end of the last words
};

}  // namespace

ErrorCounts errorCountsOf(const WordLattice& lattice, const OracleResult& result) {
  ErrorCounts counts{static_cast<int>(result.reference.size()), result.best.counts,
                     result.oracle.counts};
  const double seconds = lattice.nodes.back().time - lattice.nodes.front().time;
  if (lattice.hasTimes && seconds > 0.0) {
    counts.links = static_cast<double>(lattice.links.size());
    counts.seconds = seconds;
  }
  return counts;
}

void addCounts(ErrorCounts& all, const ErrorCounts& one) {
  all.words += one.words;
  addEdits(all.best, one.best);
  addEdits(all.oracle, one.oracle);
  all.links += one.links;
  all.seconds += one.seconds;
}

std::string tableHeading() {
  std::array<std::string, kColumns.size()> fields;
  std::copy(kColumns.begin(), kColumns.end(), fields.begin());
  return tableLine(fields, "utterance");
}

std::string tableRow(const std::string& name, const ErrorCounts& counts) {
  const auto number = [](int count) { return std::to_string(count); };
  return tableLine({number(counts.words), rateOf(counts.best, counts.words),
                    number(counts.best.substitutions), number(counts.best.deletions),
                    number(counts.best.insertions), rateOf(counts.oracle, counts.words),
                    number(counts.oracle.substitutions), number(counts.oracle.deletions),
                    number(counts.oracle.insertions), linksPerSecond(counts, "-")},
                   withControlPictures(name));
}

std::string tsvHeading() {
  return "utterance\twords\tbest_sub\tbest_del\tbest_ins\toracle_sub\toracle_del\toracle_ins\t"
         "links_per_second\n";
}

std::string tsvRow(const std::string& name, const ErrorCounts& counts) {
  std::string row = withControlPictures(name);
  for (const int count :
       {counts.words, counts.best.substitutions, counts.best.deletions, counts.best.insertions,
        counts.oracle.substitutions, counts.oracle.deletions, counts.oracle.insertions})
    row += "\t" + std::to_string(count);
  return row + "\t" + linksPerSecond(counts, "nan") + "\n";
}

std::string alignmentText(const WordLattice& lattice, const OracleResult& result) {
  const std::size_t count = result.reference.size();
  const PlacedWords best = placed(lattice, result.best, count);
  const PlacedWords oracle = placed(lattice, result.oracle, count);
  const auto wordAt = [](const std::vector<std::string>& words, std::size_t place) {
    return place < words.size() ? words[place] : kMissing;
  };
  AlignedLines lines;
  for (std::size_t i = 0; i <= count; ++i) {
    const std::size_t inserted = std::max(best.before[i].size(), oracle.before[i].size());
    for (std::size_t place = 0; place < inserted; ++place)
      lines.add({kMissing, wordAt(best.before[i], place), wordAt(oracle.before[i], place)});
    if (i < count)
      lines.add({withControlPictures(result.reference[i]), best.beside[i], oracle.beside[i]});
  }
  return lines.text();
}

}  // namespace quorbel
