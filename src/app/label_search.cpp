#include "app/label_search.h"

#include <glib.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <tuple>

#include "layout/label_lines.h"

namespace quorbel {
namespace {

using Characters = std::unique_ptr<char, void (*)(void*)>;

Characters owned(char* characters) { return {characters, g_free}; }

bool isAscii(const std::string& text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80u; });
}

/// Malformed times are one, the last.
double orderedTime(double time) {
  return std::isnan(time) ? std::numeric_limits<double>::infinity() : time;
}

/// The start of an edge as far as its node is drawn; else such edges come last, too.
double startOf(const LayoutItem& edge, const std::vector<LayoutItem>& items,
               const NodeItems& nodeItems) {
  const auto [first, last] = nodeItems.find(edge.startNode);
  return orderedTime(first == last ? std::nan("") : items[first->second].time);
}

}  // namespace

std::string shownLabel(const LayoutItem& edge) {
  const std::string from = std::to_string(edge.startNode);
  const std::string to = std::to_string(edge.endNode);
  std::string name = from;
  name.append("->").append(to);
  std::string text;
  for (const LabelLine& line :
       labelLines(edge.label, {{'G', "G"}, {'E', name}, {'T', from}, {'H', to}})) {
    if (!text.empty()) text += ' ';
    text += line.text;
  }
  return text;
}

std::string foldedText(const std::string& text) {
  std::string folded = text;
  if (isAscii(text)) {
    for (char& c : folded) c = g_ascii_tolower(c);
    return folded;
  }
  // Letters are taken apart from their marks to lose their case, and then put together again.
  const auto valid = owned(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
  const auto apart = owned(g_utf8_normalize(valid.get(), -1, G_NORMALIZE_NFD));
  const auto caseless = owned(g_utf8_casefold(apart.get(), -1));
  const auto composed = owned(g_utf8_normalize(caseless.get(), -1, G_NORMALIZE_NFC));
  return composed.get();
}

void LabelSearch::index(const std::vector<LayoutItem>& items, const NodeItems& nodeItems) {
  std::vector<std::tuple<double, int, int, std::size_t>> order;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const LayoutItem& item = items[i];
    if (item.isNode || item.x == LayoutItem::kNoPosition) continue;
    order.emplace_back(startOf(item, items, nodeItems), item.x, -item.y, i);
  }
  std::sort(order.begin(), order.end());
  m_Labels.clear();
  m_Labels.reserve(order.size());
  for (const auto& [time, x, down, position] : order)
    m_Labels.push_back({foldedText(shownLabel(items[position])), position});
}

std::vector<std::size_t> LabelSearch::find(const std::string& text) const {
  std::vector<std::size_t> ranks;
  const std::string wanted = foldedText(text);
  if (wanted.empty()) return ranks;
  for (std::size_t rank = 0; rank < m_Labels.size(); ++rank)
    if (m_Labels[rank].text.find(wanted) != std::string::npos) ranks.push_back(rank);
  return ranks;
}

std::optional<std::size_t> LabelSearch::rankOf(const LayoutItem& edge,
                                               const std::vector<LayoutItem>& items) const {
  const auto found = std::find_if(m_Labels.begin(), m_Labels.end(), [&](const Label& label) {
    const LayoutItem& item = items[label.position];
    return item.linkId == edge.linkId && item.startNode == edge.startNode &&
           item.endNode == edge.endNode;
  });
  if (found == m_Labels.end()) return std::nullopt;
  return static_cast<std::size_t>(found - m_Labels.begin());
}

std::optional<std::size_t> stepAmong(const std::vector<std::size_t>& ranks,
                                     std::optional<std::size_t> from, Step step) {
  if (ranks.empty()) return std::nullopt;
  const std::size_t last = ranks.size() - 1;
  if (!from) return step == Step::Previous ? last : 0;
  const auto notBefore = std::lower_bound(ranks.begin(), ranks.end(), *from);
  if (step == Step::Previous)
    return notBefore == ranks.begin() ? last
                                      : static_cast<std::size_t>(notBefore - ranks.begin()) - 1;
  const bool isHere = notBefore != ranks.end() && *notBefore == *from;
  const auto next = notBefore + (step == Step::Next && isHere ? 1 : 0);
  return next == ranks.end() ? 0 : static_cast<std::size_t>(next - ranks.begin());
}

std::string foundText(std::optional<std::size_t> chosen, std::size_t count) {
  if (count == 0) return "not found";
  return std::to_string(chosen ? *chosen + 1 : 0) + " of " + std::to_string(count);
}

}  // namespace quorbel
