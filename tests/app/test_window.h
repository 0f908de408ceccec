#pragma once

#include "app/main_window.h"

namespace quorbel {

/// The real window with its inside laid open.
class TestWindow : public MainWindow {
 public:
  using MainWindow::MainWindow;

  using MainWindow::kFileContext;
  using MainWindow::kRunContext;

  using MainWindow::build_sibling_menu;
  using MainWindow::canvasMapping;
  using MainWindow::clear_selection;
  using MainWindow::exportGraph;
  using MainWindow::followSound;
  using MainWindow::invalidateViews;
  using MainWindow::on_about;
  using MainWindow::on_close;
  using MainWindow::on_close_find_bar;
  using MainWindow::on_display_default;
  using MainWindow::on_display_selected_xml;
  using MainWindow::on_display_value;
  using MainWindow::on_export;
  using MainWindow::on_find;
  using MainWindow::on_find_next;
  using MainWindow::on_open_dialog;
  using MainWindow::on_open_sound;
  using MainWindow::on_path_with_edge;
  using MainWindow::on_play;
  using MainWindow::on_play_tick;
  using MainWindow::on_quit;
  using MainWindow::on_scores;
  using MainWindow::on_shortest_path;
  using MainWindow::on_stop;
  using MainWindow::on_zoom_fit;
  using MainWindow::on_zoom_in;
  using MainWindow::on_zoom_out;
  using MainWindow::open_lattice;
  using MainWindow::renderGraph;
  using MainWindow::show_error;
  using MainWindow::visiblePart;

  using MainWindow::m_AttributeTree;
  using MainWindow::m_Audio;
  using MainWindow::m_BoxStamps;
  using MainWindow::m_Columns;
  using MainWindow::m_ControlHeld;
  using MainWindow::m_CurrentDir;
  using MainWindow::m_DragCurrentX;
  using MainWindow::m_Dragging;
  using MainWindow::m_DragStartX;
  using MainWindow::m_EdgeLayouts;
  using MainWindow::m_FileOpened;
  using MainWindow::m_FindBar;
  using MainWindow::m_FundingImage;
  using MainWindow::m_FundingItem;
  using MainWindow::m_Graph;
  using MainWindow::m_GraphArea;
  using MainWindow::m_GraphScroll;
  using MainWindow::m_HoverShown;
  using MainWindow::m_HPaned;
  using MainWindow::m_InfoScroll;
  using MainWindow::m_InfoView;
  using MainWindow::m_LogoImage;
  using MainWindow::m_LogoItem;
  using MainWindow::m_LowerPaned;
  using MainWindow::m_MainBox;
  using MainWindow::m_NodeItems;
  using MainWindow::m_OpenButton;
  using MainWindow::m_PlayElapsedMs;
  using MainWindow::m_Playing;
  using MainWindow::m_PlayStartMs;
  using MainWindow::m_PointerX;
  using MainWindow::m_PointerY;
  using MainWindow::m_RangeEnd;
  using MainWindow::m_RangeStart;
  using MainWindow::m_refActionGroup;
  using MainWindow::m_refGraphImage;
  using MainWindow::m_refInfoBuffer;
  using MainWindow::m_refShownImage;
  using MainWindow::m_refTreeSelection;
  using MainWindow::m_refTreeStore;
  using MainWindow::m_refUIManager;
  using MainWindow::m_refWaveformPicture;
  using MainWindow::m_Rendering;
  using MainWindow::m_RightPaned;
  using MainWindow::m_RunsInProgress;
  using MainWindow::m_ScaledPicture;
  using MainWindow::m_SelectedEdges;
  using MainWindow::m_ShowPath;
  using MainWindow::m_ShowPathWithEdge;
  using MainWindow::m_SiblingMenu;
  using MainWindow::m_SoundArea;
  using MainWindow::m_SoundLoaded;
  using MainWindow::m_SoundPath;
  using MainWindow::m_SoundScroll;
  using MainWindow::m_SpareTreeView;
  using MainWindow::m_StartupPath;
  using MainWindow::m_Statusbar;
  using MainWindow::m_TickConnection;
  using MainWindow::m_TreeScroll;
  using MainWindow::m_UserScrolledUs;
  using MainWindow::m_Waveform;
  using MainWindow::m_Zoom;
};

}  // namespace quorbel
