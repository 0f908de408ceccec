#pragma once

// The one window of the viewer. This header is the index of src/app: behind each operation stands
// the file that defines it.

#include <gtkmm.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/box_stamps.h"
#include "app/canvas_geometry.h"
#include "app/command_run.h"
#include "app/find_bar.h"
#include "app/label_search.h"
#include "app/lattice_import.h"
#include "app/scaled_picture.h"
#include "dialogs/file_dialog.h"
#include "lattice/graph.h"
#include "lattice/layout_item.h"
#include "layout/node_items.h"
#include "sound/audio_io.h"
#include "sound/waveform.h"

namespace quorbel {

/// Shows one lattice: its drawing, the attributes of the selected links, and its sound.
///
/// Everything runs on the toolkit's main thread, but for the loading of a picture, which touches
/// nothing of the window. While `dot` runs for a drawing or an export events go on; `m_Rendering`
/// and `putOffWhileRendering` keep them from getting in its way.
class MainWindow : public Gtk::Window {
 public:
  /// Builds the window, hidden; its first show opens `startupPath` unless that is empty.
  /// Throws Glib::Error when the window's icon is missing from IMAGE_DIR.
  explicit MainWindow(const std::string& startupPath);
  ~MainWindow() override;

  /// Whether the user has left the program, perhaps before the main loop began.
  bool isQuitting() const { return m_Quitting; }

  /// Handler for exceptions that leave a signal handler (Glib::add_exception_handler): prints one
  /// line on standard output and shows the text in the error box. A run of the rendering pipeline
  /// that the exception broke off is ended, so that the next action draws again.  // errors.cpp
  void on_uncaught_exception();

 protected:
  /// Columns of the attribute tree.
  class ModelColumns : public Gtk::TreeModel::ColumnRecord {
   public:
    ModelColumns() {
      add(name);
      add(value);
    }
    Gtk::TreeModelColumn<Glib::ustring> name;
    Gtk::TreeModelColumn<Glib::ustring> value;
  };

  /// Counts a run of `dot`, for a drawing or an export, while it lasts. At its end it has commands
  /// looked at that were put off, and notes when an exception broke a drawing off.
  class Run {
   public:
    explicit Run(MainWindow& window);
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    MainWindow& m_Window;
    const int m_ExceptionsBefore;
  };

  enum class Purpose { kOpenLattice, kOther };

  /// What waits for a run to be over.
  struct PutOffCommand {
    std::function<void()> command;
    Purpose purpose;
  };

  /// A path that was switched on and not drawn yet.
  enum class NewPath { None, Best, WithEdge };

  /// The drawing as the pointer took hold of it.
  struct CanvasDrag {
    unsigned button;
    double rootX, rootY;      ///< where on the screen
    double scrollX, scrollY;  ///< how far the canvas was scrolled
  };

  static constexpr int kInfoHeight = 30;  ///< of the information text at first, pixels

  static constexpr guint kFileContext = 0;  ///< status bar: which file is open
  static constexpr guint kRunContext = 1;   ///< status bar: what is being done, and path totals
  static constexpr const char* kNoFile = "No file opened";  ///< first message of kFileContext

  virtual void on_open_dialog();                         // opening.cpp
  virtual void open_lattice(const std::string& name);    // opening.cpp: a file in m_CurrentDir
  virtual void on_export(const std::string& format);     // exporting.cpp
  virtual void on_open_sound();                          // sound_commands.cpp
  virtual void on_close();                               // opening.cpp
  virtual void on_quit();                                // small_commands.cpp
  virtual void on_about();                               // small_commands.cpp
  virtual void on_zoom_in();                             // zoom.cpp
  virtual void on_zoom_out();                            // zoom.cpp
  virtual void on_zoom_fit();                            // zoom.cpp
  virtual void on_shortest_path();                       // display_modes.cpp
  virtual void on_path_with_edge();                      // display_modes.cpp
  virtual void on_display_value();                       // display_modes.cpp
  virtual void on_display_selected_xml();                // display_modes.cpp
  virtual void on_display_default();                     // display_modes.cpp
  virtual void on_scores();                              // display_modes.cpp
  virtual void on_play();                                // sound_commands.cpp
  virtual void on_stop();                                // sound_commands.cpp
  virtual void on_window_show();                         // opening.cpp
  virtual bool on_sound_motion(GdkEventMotion* event);   // sound_strip.cpp
  virtual bool on_sound_press(GdkEventButton* event);    // sound_strip.cpp
  virtual bool on_sound_release(GdkEventButton* event);  // sound_strip.cpp
  virtual bool on_sound_expose(GdkEventExpose* event);   // sound_strip.cpp
  virtual bool on_graph_expose(GdkEventExpose* event);   // canvas.cpp
  virtual bool on_graph_scroll(GdkEventScroll* event);   // zoom.cpp
  virtual bool on_graph_motion(GdkEventMotion* event);   // pointer.cpp: hover
  virtual bool on_graph_press(GdkEventButton* event);    // pointer.cpp: a double press selects
  virtual bool on_key_event(GdkEventKey* event);         // keys.cpp: the left Control key
  virtual bool on_play_tick();                           // sound_commands.cpp

  void addActions();      // actions.cpp
  void buildInterface();  // actions.cpp: menu bar and tool bar
  void arrangePanes();    // main_window.cpp
  void connectSignals();  // main_window.cpp
  void addKeys();         // keys.cpp: keys that no menu shows
  void nameParts();       // accessible_names.cpp: for screen readers
  void endProgram();      // small_commands.cpp

  std::string build_sibling_menu(const std::string& path);                // opening.cpp
  std::string folderForDialogs() const;                                   // opening.cpp
  std::optional<ImportedLattice> importLattice(const std::string& path);  // importing.cpp
  void exportGraph(const std::string& format);                            // exporting.cpp
  std::string askAndExport(const std::string& format);                    // exporting.cpp
  void loadMatchingSound(const std::string& latticePath);                 // sound_commands.cpp
  void loadSound();                                                       // sound_commands.cpp
  void closeSound();                                                      // sound_commands.cpp
  double playPosition() const;                                            // sound_commands.cpp
  const Waveform& currentWaveform();                                      // sound_strip.cpp
  Glib::RefPtr<Gdk::Pixmap> waveformPicture();                            // sound_strip.cpp
  void show_error(Gtk::Window& parent, const std::string& message);       // errors.cpp
  void sayWhenDrawn(const std::string& message);                          // errors.cpp

  void renderGraph();                              // rendering.cpp
  void endRun();                                   // rendering.cpp
  bool runPendingEvents();                         // rendering.cpp
  bool showStage(const Glib::ustring& text);       // rendering.cpp
  void carrySelectionOver();                       // rendering.cpp
  void showPathTotals();                           // rendering.cpp
  bool isRunWanted() const;                        // put_off.cpp
  int runCommand(const std::string& commandLine);  // put_off.cpp
  void breakOffRun();                              // put_off.cpp
  bool putOffWhileRendering(const std::function<void()>& command,
                            Purpose purpose = Purpose::kOther);  // put_off.cpp
  void lookAtPutOff();                                           // put_off.cpp
  bool carryOutNext();                                           // put_off.cpp
  void setPointer(Gdk::CursorType cursor);                       // rendering.cpp

  CanvasMapping canvasMapping() const;  // canvas.cpp
  void rescaleImage();                  // zoom.cpp
  void resizeCanvas();                  // zoom.cpp
  void zoomBy(float factor);            // zoom.cpp
  void zoomTo(float zoom);              // zoom.cpp: keeps a point of the drawing in its place

  Box visiblePart() const;                    // scrolling_canvas.cpp: of the canvas
  CanvasMapping comingMapping() const;        // scrolling_canvas.cpp
  void scrollCanvas(double x, double y);      // scrolling_canvas.cpp
  void showInMiddle(const LayoutItem& edge);  // scrolling_canvas.cpp

  void on_graph_map();                           // tooltip.cpp
  bool on_graph_release(GdkEventButton* event);  // dragging.cpp
  void beginDrag(const GdkEventButton& event);   // dragging.cpp
  bool dragTo(const GdkEventMotion& event);      // dragging.cpp
  void endDrag();                                // dragging.cpp
  bool on_graph_tooltip(int x, int y, bool,
                        const Glib::RefPtr<Gtk::Tooltip>& tooltip);  // tooltip.cpp
  void forgetTooltip();                                              // tooltip.cpp
  void showNewPath(NewPath path);                                    // following.cpp
  void makeRoomForPathTexts();                                       // following.cpp
  void followSound();                                                // following.cpp
  void on_graph_scrolled();                                          // following.cpp
  void drawingChanged();                                             // rendering.cpp

  void on_find();                            // finding.cpp: opens the bar
  void on_close_find_bar();                  // finding.cpp
  void on_find_next();                       // finding.cpp
  void on_find_previous();                   // finding.cpp
  void on_find_text_changed();               // finding.cpp
  void findStep(Step step);                  // finding.cpp: selects what is found
  void findAgain();                          // finding.cpp
  void findInNewDrawing();                   // finding.cpp
  void sayFound();                           // finding.cpp
  void forgetFound();                        // finding.cpp
  bool isInFindBar();                        // finding.cpp
  bool on_key_before(GdkEventKey* event);    // keys.cpp
  bool on_find_bar_key(GdkEventKey* event);  // keys.cpp

  void clear_selection();                                     // attribute_tree.cpp
  void clearAttributeTree();                                  // attribute_tree.cpp
  void refillAttributeTree();                                 // attribute_tree.cpp
  void invalidateViews();                                     // pointer.cpp: canvas and sound strip
  void selectEdge(const LayoutItem& edge, bool keepsOthers);  // pointer.cpp

  Gtk::VBox m_MainBox;
  Gtk::HPaned m_HPaned;
  Gtk::VPaned m_RightPaned;
  Gtk::VPaned m_LowerPaned;
  Gtk::ScrolledWindow m_TreeScroll;
  Gtk::ScrolledWindow m_SoundScroll;
  Gtk::ScrolledWindow m_GraphScroll;
  Gtk::TreeView m_SpareTreeView;  ///< placed nowhere
  Gtk::DrawingArea m_GraphArea;
  Gtk::DrawingArea m_SoundArea;
  Gtk::TreeView m_AttributeTree;
  Gtk::Statusbar m_Statusbar;
  Gtk::Image m_LogoImage;
  Gtk::Image m_FundingImage;
  Gtk::ToolItem m_LogoItem;
  Gtk::ToolItem m_FundingItem;
  Gtk::MenuToolButton m_OpenButton;
  Gtk::Menu m_SiblingMenu;  ///< files beside the open lattice
  Gtk::ScrolledWindow m_InfoScroll;
  Gtk::TextView m_InfoView;
  Glib::RefPtr<Gtk::TextBuffer> m_refInfoBuffer;
  Glib::RefPtr<Gdk::Pixbuf> m_refGraphImage;  ///< the drawing as `dot` rendered it, may be empty
  Glib::RefPtr<Gdk::Pixbuf> m_refShownImage;  ///< the drawing at the current zoom, may be empty
  Glib::RefPtr<Gtk::UIManager> m_refUIManager;
  Glib::RefPtr<Gtk::ActionGroup> m_refActionGroup;

  Graph m_Graph;
  std::vector<LayoutItem> m_EdgeLayouts;    ///< nodes and edges of the drawing
  std::vector<LayoutItem> m_SelectedEdges;  ///< copies, in the order of selection
  float m_Zoom = 1.0f;
  int m_PointerX = 0;  ///< last pointer position over the canvas, canvas pixels
  int m_PointerY = 0;
  bool m_ShowPath = false;
  bool m_ShowPathWithEdge = false;
  bool m_FileOpened = false;
  bool m_Rendering = false;
  bool m_ControlHeld = false;  ///< the next double press adds to the selection or takes from it
  double m_RangeStart = -1.0;  ///< selected stretch of sound, fractions; -1.0 when there is none
  double m_RangeEnd = -1.0;
  std::string m_CurrentDir;  ///< folder of the lattice last asked for, open or not; may be relative
  int m_DragStartX = -1;     ///< drag on the sound strip, pixels; -1 when there is none
  int m_DragCurrentX = -1;
  bool m_Dragging = false;
  bool m_Playing = false;
  std::int32_t m_PlayStartMs = 0;    ///< wall clock when play started
  std::int32_t m_PlayElapsedMs = 0;  ///< time since play started, as of the last tick
  std::string m_StartupPath;         ///< lattice to open at the first show
  ModelColumns m_Columns;
  Glib::RefPtr<Gtk::TreeStore> m_refTreeStore;
  Glib::RefPtr<Gtk::TreeSelection> m_refTreeSelection;
  AudioIO m_Audio;
  std::string m_SoundPath;
  bool m_SoundLoaded = false;

  ScaledPicture m_ScaledPicture;  ///< makes m_refShownImage, which is whole only where it was seen
  /// Where in the visible part of the canvas the point lies that a zoom keeps in its place, pixels;
  /// none for the middle.
  std::optional<std::pair<double, double>> m_ZoomPoint;

  BoxStamps m_BoxStamps;      ///< shapes of the boxes at the current zoom
  bool m_HoverShown = false;  ///< the canvas may show the box of a label under the pointer
  NodeItems m_NodeItems;      ///< finds the nodes among m_EdgeLayouts
  Waveform m_Waveform;        ///< columns of the loaded sound for the strip's width
  Glib::RefPtr<Gdk::Pixmap> m_refWaveformPicture;  ///< the strip without range and cursor, or empty

  std::optional<CanvasDrag> m_CanvasDrag;
  const LayoutItem* m_TooltipLink = nullptr;  ///< in m_EdgeLayouts: what m_TooltipText tells of
  Glib::ustring m_TooltipText;
  NewPath m_NewPath = NewPath::None;
  bool m_HasMadeRoom = false;              ///< for the words of the paths
  bool m_IsFollowing = false;              ///< the window is scrolling the canvas by itself
  std::optional<gint64> m_UserScrolledUs;  ///< when the canvas was last scrolled otherwise

  Glib::RefPtr<Gtk::ActionGroup> m_refKeyActions;  ///< for keys that no menu shows
  FindBar m_FindBar;                               ///< in the window once it was opened
  Gtk::Widget* m_FocusBeforeFinding = nullptr;     ///< a part of the window, or none
  std::set<unsigned> m_KeysOfFindBar;  ///< hardware codes of keys that the bar got and not let go
  LabelSearch m_LabelSearch;
  bool m_IsSearchIndexed = false;          ///< m_LabelSearch has the labels of m_EdgeLayouts
  std::vector<std::size_t> m_FoundRanks;   ///< what the bar's text is found in
  std::optional<std::size_t> m_FoundRank;  ///< the one found last, which need not have the text
  LayoutItem m_FoundEdge;                  ///< the link of m_FoundRank
  bool m_FindAfterRun = false;             ///< somebody typed into the bar during a run

  FileDialog m_LatticeDialog;  ///< empty until first used, as the others
  FileDialog m_SoundDialog;
  FileDialog m_ExportDialog;

  int m_RunsInProgress = 0;     ///< drawings and exports that have not come to their end
  bool m_Exporting = false;     ///< one of them is an export
  bool m_RunBrokenOff = false;  ///< an exception left renderGraph and nobody has cleaned up yet
  std::deque<PutOffCommand> m_PutOff;
  bool m_CarryingOut = false;             ///< one of m_PutOff is being carried out
  sigc::connection m_LookConnection;      ///< they are about to be looked at
  CommandRun m_Commands;                  ///< runs `dot`, and what imports lattices
  std::optional<LatticeImport> m_Import;  ///< how lattices in other forms are opened, if they are
  bool m_Quitting = false;
  sigc::connection m_TickConnection;            ///< the play cursor, while sound plays
  std::vector<sigc::connection> m_Connections;  ///< cut before the members go
};

}  // namespace quorbel
