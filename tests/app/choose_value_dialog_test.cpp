#include "dialogs/choose_value_dialog.h"

#include <gtk/gtk.h>

#include <algorithm>

#include "app/window_fixture.h"

namespace quorbel {
namespace {

/// The dialog by itself, not run.
class ChooseValue : public WindowTest {
 protected:
  ChooseValue() { showWindow(); }

  /// The buttons to choose from, in their order.
  static std::vector<Gtk::RadioButton*> buttonsOf(ChooseValueDialog& dialog) {
    std::vector<Gtk::RadioButton*> buttons;
    for (Gtk::Widget* child : dialog.get_vbox()->get_children())
      if (auto* const button = dynamic_cast<Gtk::RadioButton*>(child)) buttons.push_back(button);
    return buttons;
  }
};

TEST_F(ChooseValue, FirstValueIsChosenUntilAnotherIs) {
  ChooseValueDialog dialog("title", *window, true, true);
  for (const char* value : {"b", "a", "c"}) dialog.add_value(value);
  EXPECT_EQ(dialog.chosen_value(), "b");
  dialog.select_value("c");
  EXPECT_EQ(dialog.chosen_value(), "c");
  dialog.select_value("a");
  EXPECT_EQ(dialog.chosen_value(), "a");
}

TEST_F(ChooseValue, UnknownValueChangesNothing) {
  ChooseValueDialog dialog("title", *window, true, true);
  for (const char* value : {"ac", "lm"}) dialog.add_value(value);
  dialog.select_value("lm");
  for (const char* unknown : {"", "LM", "l", "lm ", "_lm"}) {
    dialog.select_value(unknown);
    EXPECT_EQ(dialog.chosen_value(), "lm") << unknown;
  }
}

TEST_F(ChooseValue, OfEqualValuesTheFirstIsChosen) {
  ChooseValueDialog dialog("title", *window, true, true);
  for (const char* value : {"a", "b", "b"}) dialog.add_value(value);
  dialog.finish_layout();
  dialog.select_value("b");
  EXPECT_TRUE(buttonsOf(dialog).at(1)->get_active());
  EXPECT_FALSE(buttonsOf(dialog).at(2)->get_active());
}

TEST_F(ChooseValue, OneButtonIsActiveAtATime) {
  ChooseValueDialog dialog("title", *window, true, true);
  for (const char* value : {"a", "b", "c"}) dialog.add_value(value);
  dialog.finish_layout();
  const std::vector<Gtk::RadioButton*> buttons = buttonsOf(dialog);
  ASSERT_EQ(buttons.size(), 3u);
  buttons[2]->clicked();
  EXPECT_EQ(dialog.chosen_value(), "c");
  EXPECT_FALSE(buttons[0]->get_active());
  EXPECT_FALSE(buttons[1]->get_active());
}

TEST_F(ChooseValue, WithoutValuesNothingIsChosen) {
  ChooseValueDialog dialog("title", *window, true, true);
  dialog.select_value("a");
  EXPECT_EQ(dialog.chosen_value(), "");
  dialog.finish_layout();
  EXPECT_EQ(dialog.chosen_value(), "");
}

TEST_F(ChooseValue, ClearedValuesAreGone) {
  ChooseValueDialog dialog("title", *window, true, true);
  for (const char* value : {"a", "b"}) dialog.add_value(value);
  dialog.finish_layout();
  dialog.clear_values();
  EXPECT_EQ(dialog.chosen_value(), "");
  EXPECT_EQ(buttonsOf(dialog).size(), 0u);
}

TEST_F(ChooseValue, UnderlinesInValuesAreShown) {
  ChooseValueDialog dialog("title", *window, true, true);
  dialog.add_value("ac_like");
  dialog.finish_layout();
  Gtk::RadioButton& button = *buttonsOf(dialog).at(0);
  EXPECT_FALSE(button.get_use_underline());
  EXPECT_EQ(dynamic_cast<Gtk::Label&>(*button.get_child()).get_text(), "ac_like");
  EXPECT_EQ(dialog.chosen_value(), "ac_like");
}

TEST_F(ChooseValue, TakesTitleModalityAndSeparatorFromItsMaker) {
  ChooseValueDialog one("one", *window, true, true);
  EXPECT_EQ(one.get_title(), "one");
  EXPECT_TRUE(one.get_modal());
  EXPECT_TRUE(one.get_has_separator());
  EXPECT_EQ(one.get_transient_for(), window.get());
  ChooseValueDialog other("other", *window, false, false);
  EXPECT_EQ(other.get_title(), "other");
  EXPECT_FALSE(other.get_modal());
  EXPECT_FALSE(other.get_has_separator());
}

TEST_F(ChooseValue, CheckButtonIsReachedByItsOwner) {
  ChooseValueDialog dialog("title", *window, true, true);
  EXPECT_FALSE(dialog.zero_score_check().get_active());
  dialog.zero_score_check().set_active(true);
  EXPECT_TRUE(dialog.zero_score_check().get_active());
  EXPECT_EQ(dialog.zero_score_check().get_label(), "Use 0-score");
  EXPECT_FALSE(dialog.zero_score_check().get_use_underline());
}

TEST_F(ChooseValue, HasPromptValuesAndCheckFromTopToBottom) {
  ChooseValueDialog dialog("title", *window, true, true);
  for (const char* value : {"b", "a"}) dialog.add_value(value);
  EXPECT_TRUE(dialog.get_resizable());
  dialog.finish_layout();
  dialog.show();
  settle();

  std::vector<std::pair<int, std::string>> texts;
  for (Gtk::Widget* child : dialog.get_vbox()->get_children()) {
    std::string text;
    if (auto* const label = dynamic_cast<Gtk::Label*>(child)) text = label->get_text();
    if (auto* const button = dynamic_cast<Gtk::Button*>(child)) text = button->get_label();
    if (text.empty()) continue;  // the separator and the buttons below
    EXPECT_TRUE(child->is_mapped()) << text;
    texts.emplace_back(child->get_allocation().get_y(), text);
    gboolean expand = FALSE, fill = FALSE;
    guint padding = 1;
    GtkPackType pack;
    gtk_box_query_child_packing(GTK_BOX(dialog.get_vbox()->gobj()), child->gobj(), &expand, &fill,
                                &padding, &pack);
    EXPECT_TRUE(expand && fill) << text;
    EXPECT_EQ(padding, 0u) << text;
  }
  std::sort(texts.begin(), texts.end());
  std::vector<std::string> fromTop;
  for (const auto& [y, text] : texts) fromTop.push_back(text);
  EXPECT_EQ(fromTop, (std::vector<std::string>{"Choose the score you want to use :", "b", "a",
                                               "Use 0-score"}));
  EXPECT_FALSE(dialog.get_resizable());
}

TEST_F(ChooseValue, HasOkBeforeCancel) {
  ChooseValueDialog dialog("title", *window, true, true);
  dialog.finish_layout();
  dialog.show();
  settle();
  struct ButtonAt {
    int x;
    std::string stock;
    int response;
  };
  std::vector<ButtonAt> buttons;
  for (Gtk::Widget* child : dialog.get_action_area()->get_children()) {
    auto& button = dynamic_cast<Gtk::Button&>(*child);
    buttons.push_back({button.get_allocation().get_x(), button.get_label(),
                       gtk_dialog_get_response_for_widget(dialog.gobj(), child->gobj())});
  }
  std::sort(buttons.begin(), buttons.end(),
            [](const ButtonAt& a, const ButtonAt& b) { return a.x < b.x; });
  ASSERT_EQ(buttons.size(), 2u);
  EXPECT_EQ(buttons[0].stock, "gtk-ok");
  EXPECT_EQ(buttons[0].response, Gtk::RESPONSE_OK);
  EXPECT_EQ(buttons[1].stock, "gtk-cancel");
  EXPECT_EQ(buttons[1].response, Gtk::RESPONSE_CANCEL);
}

}  // namespace
}  // namespace quorbel
