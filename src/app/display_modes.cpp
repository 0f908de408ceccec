// What the drawing shows: best paths, label modes, and the score that counts. Each changes its
// state and has the lattice drawn again.

#include <algorithm>

#include "app/main_window.h"
#include "dialogs/choose_value_dialog.h"
#include "lattice/shortest_path.h"
#include "texts/product.h"
#include "texts/user_text.h"

namespace quorbel {

void MainWindow::on_shortest_path() {
  if (!m_refGraphImage) return;
  m_ShowPath = !m_ShowPath;
  setShowBestPath(m_Graph, m_ShowPath);
  m_NewPath = m_ShowPath ? NewPath::Best : NewPath::None;
  renderGraph();
}

void MainWindow::on_path_with_edge() {
  if (!m_refGraphImage) return;
  if (!m_SelectedEdges.empty()) {
    m_ShowPathWithEdge = true;
    setSelectedEdge(m_Graph, true, m_SelectedEdges.front());
    m_NewPath = NewPath::WithEdge;
  } else if (m_ShowPathWithEdge) {
    m_ShowPathWithEdge = false;
    setSelectedEdge(m_Graph, false, m_Graph.selectedEdge);
  } else {
    return;
  }
  renderGraph();
}

void MainWindow::on_display_default() {
  if (!m_FileOpened) return;
  m_Graph.labelByValue = false;
  m_Graph.labelBySelectedXml = false;
  m_Graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}};
  renderGraph();
}

void MainWindow::on_display_selected_xml() {
  if (!m_FileOpened) return;
  const auto paths = m_refTreeSelection->get_selected_rows();
  if (paths.empty()) {
    sayWhenDrawn("You need to select at least one attribute in the tree view");
    return;
  }
  m_Graph.labelByValue = false;
  m_Graph.labelBySelectedXml = true;
  m_Graph.fieldsByIndex.clear();
  for (const Gtk::TreePath& path : paths)
    m_Graph.fieldsByIndex.emplace_back(path.begin(), path.end());
  renderGraph();
}

void MainWindow::on_display_value() {
  if (!m_FileOpened) return;
  m_Graph.labelByValue = true;
  renderGraph();
}

/// The names offered are those of the first link that leaves node 0.
void MainWindow::on_scores() {
  if (putOffWhileRendering([this] { on_scores(); })) return;
  if (!m_FileOpened) return;
  ChooseValueDialog dialog(PRODUCT_NAME, *this, true, true);
  const std::vector<Edge>& links = m_Graph.adjacency->outgoing.front();
  std::vector<std::string> names;
  if (!links.empty())
    for (const auto& [name, score] : links.front().scores) names.push_back(name);
  for (const std::string& name : names) dialog.add_value(userText(name));
  dialog.select_value(userText(currentScoreName));
  dialog.zero_score_check().set_active(m_Graph.scoresNegated);
  dialog.finish_layout();
  if (dialog.run() != Gtk::RESPONSE_OK) return;

  takeTheOppositeScore(m_Graph, dialog.zero_score_check().get_active(), m_EdgeLayouts);
  const std::string chosen = dialog.chosen_value().raw();
  const auto name = std::find_if(names.begin(), names.end(), [&](const std::string& candidate) {
    return userText(candidate).raw() == chosen;
  });
  currentScoreName = name == names.end() ? "" : *name;
  renderGraph();
}

}  // namespace quorbel
