// Finding words in the drawing: the find bar, and its keys. What is found is in label_search.h.

#include <algorithm>
#include <utility>

#include "app/main_window.h"
#include "texts/user_text.h"

namespace quorbel {

/// Opens the bar, in its place above the panes, or goes back to it.
void MainWindow::on_find() {
  if (!m_FindBar.get_parent()) {
    m_MainBox.pack_start(m_FindBar, Gtk::PACK_SHRINK, 0);
    const std::vector<Gtk::Widget*> parts = m_MainBox.get_children();
    m_MainBox.reorder_child(
        m_FindBar,
        static_cast<int>(std::find(parts.begin(), parts.end(), &m_HPaned) - parts.begin()));
  }
  if (!isInFindBar()) m_FocusBeforeFinding = get_focus();
  if (!m_FindBar.get_visible()) {
    m_FindBar.show();
    forgetFound();
    if (!m_Rendering) {
      findAgain();
      sayFound();
    }
  }
  m_FindBar.entry.grab_focus();
}

/// Hides the bar and gives the focus back to where it was.
void MainWindow::on_close_find_bar() {
  const bool hadFocus = isInFindBar();
  m_FindBar.hide();
  if (!hadFocus) return;
  if (m_FocusBeforeFinding)
    set_focus(*m_FocusBeforeFinding);
  else
    unset_focus();
}

void MainWindow::on_find_next() { findStep(Step::Next); }

void MainWindow::on_find_previous() { findStep(Step::Previous); }

/// A text that was emptied begins anew; one that grows stays where it was, as far as it can.
void MainWindow::on_find_text_changed() {
  if (m_FindBar.entry.get_text().empty()) forgetFound();
  if (m_FindBar.get_visible()) findStep(Step::Here);
}

/// Goes to a link with the text in its label, selects it and shows it. While the lattice is drawn
/// anew nothing is selected, as by the pointer; what was typed meanwhile is looked for after it.
void MainWindow::findStep(Step step) {
  if (!m_FindBar.get_visible()) return on_find();
  if (m_Rendering) {
    m_FindAfterRun = m_FindAfterRun || step == Step::Here;
    return;
  }
  findAgain();
  if (const auto chosen = stepAmong(m_FoundRanks, m_FoundRank, step)) {
    m_FoundRank = m_FoundRanks[*chosen];
    m_FoundEdge = m_EdgeLayouts[m_LabelSearch.position(*m_FoundRank)];
    selectEdge(m_FoundEdge, false);
    showInMiddle(m_FoundEdge);
  }
  sayFound();
}

/// Looks for the text in the drawing as it is now.
void MainWindow::findAgain() {
  if (!m_IsSearchIndexed) {
    m_LabelSearch.index(m_EdgeLayouts, m_NodeItems);
    if (m_FoundRank) m_FoundRank = m_LabelSearch.rankOf(m_FoundEdge, m_EdgeLayouts);
    m_IsSearchIndexed = true;
  }
  m_FoundRanks = m_LabelSearch.find(m_FindBar.entry.get_text().raw());
}

/// Brings the bar up to date with what was found.
void MainWindow::sayFound() {
  const bool isLooking = m_FileOpened && !m_FindBar.entry.get_text().empty();
  m_FindBar.setMissing(isLooking && m_FoundRanks.empty());
  if (!isLooking) return m_FindBar.say("", "");
  const auto chosen = m_FoundRank
                          ? std::find(m_FoundRanks.begin(), m_FoundRanks.end(), *m_FoundRank)
                          : m_FoundRanks.end();
  if (chosen == m_FoundRanks.end())
    return m_FindBar.say(foundText(std::nullopt, m_FoundRanks.size()), "");
  const auto index = static_cast<std::size_t>(chosen - m_FoundRanks.begin());
  m_FindBar.say(foundText(index, m_FoundRanks.size()),
                userText(shownLabel(m_EdgeLayouts[m_LabelSearch.position(*m_FoundRank)])));
}

void MainWindow::forgetFound() {
  m_FoundRank.reset();
  m_FindAfterRun = false;
}

/// To be called when the drawing is another one: the labels may have changed, and so may what is
/// found. The selection stays, unless somebody typed while the lattice was being drawn.
void MainWindow::findInNewDrawing() {
  m_IsSearchIndexed = false;
  if (!m_FindBar.get_visible()) return forgetFound();
  if (std::exchange(m_FindAfterRun, false)) return findStep(Step::Here);
  findAgain();
  sayFound();
}

/// Whether keys go to the bar.
bool MainWindow::isInFindBar() {
  Gtk::Widget* const focus = get_focus();
  return focus && (focus == &m_FindBar || focus->is_ancestor(m_FindBar));
}

}  // namespace quorbel
