#include "formats/normalise.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "formats/link_fields.h"
#include "measures/node_order.h"
#include "measures/posteriors.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// Makes a lattice of one file.
class Normalising {
 public:
  Normalising(const SlfFile& file, WordLattice& lattice)
      : m_File(file), m_Lattice(prepared(file, lattice)), m_LinkFields(file, lattice) {}

  std::string run();

 private:
  static WordLattice& prepared(const SlfFile& file, WordLattice& lattice) {
    lattice.utterance = file.header.utterance;
    lattice.isDialect = isDialectFile(file);
    return lattice;
  }

  std::string makeNodes();
  std::string makeLinks();
  std::vector<std::size_t> nodeSizes() const;
  std::vector<int> endPoints(const std::optional<int>& given, const std::vector<char>& hasLinks,
                             const std::vector<char>& hasOtherLinks, int otherwise) const;
  std::string join();
  std::string joinStart(const std::vector<int>& starts);
  void joinEnd(const std::vector<int>& ends);
  int addNode();
  WordLink& addLink(int start, int end);
  bool saysWord(const SlfRecord& node);

  const SlfFile& m_File;
  WordLattice& m_Lattice;
  LinkFields m_LinkFields;
  std::vector<std::optional<double>> m_Times;
  std::vector<char> m_IsEntered;  ///< of each node of the file, whether a link enters it
  std::vector<char> m_IsLeft;     ///< the same for links that leave it
  int m_Start = 0;
  int m_End = 0;
  int m_NextId = 0;
};

std::string Normalising::run() {
  if (std::string error = makeNodes(); !error.empty()) return error;
  if (std::string error = makeLinks(); !error.empty()) return error;
  if (std::string error = join(); !error.empty()) return error;
  if (m_File.header.isBackward) {
    for (WordLink& link : m_Lattice.links) std::swap(link.start, link.end);
    std::swap(m_Start, m_End);
  }
  orderNodes(m_Lattice, m_Start, m_End, m_Times);
  setTimes(m_Lattice, m_Times);
  computePosteriors(m_Lattice);
  return "";
}

std::string Normalising::makeNodes() {
  m_Lattice.nodes.resize(m_File.nodes.size());
  m_Times.resize(m_File.nodes.size());
  for (const SlfRecord& node : m_File.nodes) {
    m_Lattice.nodes[slot(node.id)].fileIndex = node.id;
    for (std::size_t i = 0; i < node.fieldCount; ++i) {
      const SlfField& field = m_File.fields[node.firstField + i];
      if (field.meaning != ReaderKey::Time) continue;
      const std::optional<double> time = numberOfField(field.value);
      if (!time)
        return "line " + std::to_string(node.line) + ": " + std::string(field.key) + "=" +
               excerpt(field.value) + " is no time";
      const double scale = m_File.header.timeScale;
      m_Times[slot(node.id)] = scale == 1.0 ? *time : rounded(*time * scale);
    }
  }
  return "";
}

/// How many bytes of fields each node has.
std::vector<std::size_t> Normalising::nodeSizes() const {
  std::vector<std::size_t> sizes(m_File.nodes.size(), 0);
  for (const SlfRecord& node : m_File.nodes)
    for (std::size_t i = 0; i < node.fieldCount; ++i) {
      const SlfField& field = m_File.fields[node.firstField + i];
      sizes[slot(node.id)] += field.key.size() + field.value.size();
    }
  return sizes;
}

std::string Normalising::makeLinks() {
  // Every link says what the node says that it enters: a long line about a node that thousands of
  // links enter would fill any memory.
  constexpr std::size_t kMostTakenOver = std::size_t{16} << 20u;
  constexpr std::size_t kMostTimes = 16;
  const std::size_t mostTakenOver = std::max(kMostTakenOver, kMostTimes * m_File.bytes.size());
  const std::vector<std::size_t> sizes = nodeSizes();
  std::size_t takenOver = 0;
  m_Lattice.links.reserve(m_File.links.size() + 2);
  m_IsEntered.assign(m_File.nodes.size(), false);
  m_IsLeft.assign(m_File.nodes.size(), false);
  int highestIdLine = 0;
  for (const SlfRecord& record : m_File.links) {
    WordLink& link = m_Lattice.links.emplace_back();
    link.id = record.id;
    link.start = record.start;
    link.end = record.end;
    m_IsLeft[slot(record.start)] = true;
    m_IsEntered[slot(record.end)] = true;
    takenOver += sizes[slot(record.end)];
    if (takenOver > mostTakenOver)
      return "line " + std::to_string(record.line) +
             ": with this link, what nodes say is too much for all links that enter them";
    std::string error = m_LinkFields.fill(link, &record, m_File.nodes[slot(record.end)]);
    if (!error.empty()) return error;
    if (record.id >= m_NextId) highestIdLine = record.line;
    m_NextId = std::max(m_NextId, record.id);
  }
  if (!m_Lattice.links.empty()) {
    const int mostJoined = 2 * static_cast<int>(m_File.nodes.size());
    if (m_NextId > std::numeric_limits<int>::max() - mostJoined)
      return "line " + std::to_string(highestIdLine) + ": the link id " + std::to_string(m_NextId) +
             " is too high";
    ++m_NextId;
  }
  return "";
}

/// The nodes where paths begin (or end): the one that is given, else those with links on the other
/// side only (`hasLinks` tells of this side, `hasOtherLinks` of the other), else `otherwise`. In
/// the viewer's dialect it is `otherwise` at once.
std::vector<int> Normalising::endPoints(const std::optional<int>& given,
                                        const std::vector<char>& hasLinks,
                                        const std::vector<char>& hasOtherLinks,
                                        int otherwise) const {
  if (given) return {*given};
  if (m_Lattice.isDialect) return {otherwise};
  std::vector<int> points;
  for (std::size_t node = 0; node < hasLinks.size(); ++node)
    if (!hasLinks[node] && hasOtherLinks[node]) points.push_back(static_cast<int>(node));
  if (points.empty()) points.push_back(otherwise);
  return points;
}

std::string Normalising::join() {
  const SlfHeader& header = m_File.header;
  const int last = static_cast<int>(m_File.nodes.size()) - 1;
  const std::vector<int> starts = endPoints(header.start, m_IsEntered, m_IsLeft, 0);
  const std::vector<int> ends = endPoints(header.end, m_IsLeft, m_IsEntered, last);
  m_Start = starts[0];
  m_End = ends[0];
  const bool isStart =
      starts.size() == 1 && !m_IsEntered[slot(m_Start)] && !saysWord(m_File.nodes[slot(m_Start)]);
  if (!isStart) {
    if (std::string error = joinStart(starts); !error.empty()) return error;
  }
  const bool isEnd = ends.size() == 1 && !m_IsLeft[slot(m_End)] &&
                     (m_End != m_Start || m_Lattice.nodes.size() == 1);
  if (!isEnd) joinEnd(ends);
  return "";
}

std::string Normalising::joinStart(const std::vector<int>& starts) {
  m_Start = addNode();
  for (const int start : starts) {
    WordLink& link = addLink(m_Start, start);
    std::string error = m_LinkFields.fill(link, nullptr, m_File.nodes[slot(start)]);
    if (!error.empty()) return error;
  }
  return "";
}

void Normalising::joinEnd(const std::vector<int>& ends) {
  m_End = addNode();
  for (const int end : ends) addLink(end, m_End);
}

int Normalising::addNode() {
  m_Lattice.nodes.emplace_back();
  m_Times.emplace_back();
  return static_cast<int>(m_Lattice.nodes.size()) - 1;
}

WordLink& Normalising::addLink(int start, int end) {
  WordLink& link = m_Lattice.links.emplace_back();
  link.id = m_NextId++;
  link.start = start;
  link.end = end;
  return link;
}

/// Whether a node has a word of its own.
bool Normalising::saysWord(const SlfRecord& node) {
  WordLink link;
  m_LinkFields.fill(link, nullptr, node);
  return !link.word.isNull();
}

}  // namespace

std::string normalise(const SlfFile& file, WordLattice& lattice) {
  return Normalising(file, lattice).run();
}

}  // namespace quorbel
