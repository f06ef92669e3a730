#include "widgets/control.h"

#include <algorithm>
#include <utility>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"

namespace vorek {

Control::Control(Control* parent, std::string name, int index)
    : parent_(parent), name_(std::move(name)), index_(index) {
  if (parent_ == nullptr) return;
  parent_->children_.push_back(this);
  if (ControlObserver* observer = Observer()) observer->ChildAdded(*this);
}

Control::~Control() {
  for (Control* child : children_) child->parent_ = nullptr;
  if (parent_ == nullptr) {
    if (observer_ != nullptr) observer_->RootGone();
    return;
  }
  if (ControlObserver* observer = Observer()) observer->ChildRemoved(*this);
  Control& root = Root();
  if (root.active_ == this) root.active_ = nullptr;
  std::erase(parent_->children_, this);
}

void Control::Click() {
  if (on_click) on_click();
}
void Control::DblClick() {
  if (on_dblclick) on_dblclick();
}
void Control::KeyDown(int key_code, int shift) {
  key_taken_ = false;
  if (on_key_down) on_key_down(key_code, shift);
}
void Control::KeyPress(char32_t) {}
void Control::Type(const std::string&) {
  throw Error(ErrorNumber::kInvalidCall, Path() + " takes no typing");
}
void Control::MouseDown(int button, int shift, double x, double y) {
  if (on_mouse_down) on_mouse_down(button, shift, x, y);
}
void Control::MouseMove(int button, int shift, double x, double y) {
  if (on_mouse_move) on_mouse_move(button, shift, x, y);
}
void Control::GotFocus() {
  Root().active_ = this;
  if (on_got_focus) on_got_focus();
}

void Control::LostFocus() {
  if (on_lost_focus) on_lost_focus();
}

std::string Control::PathName() const {
  return index_ < 0 ? name_ : name_ + "(" + std::to_string(index_) + ")";
}

std::string Control::Path() const {
  if (parent_ == nullptr) return PathName();
  const Control* above = parent_;
  while (above->parent_ != nullptr && above->Kind() == "Frame") above = above->parent_;
  return above->Path() + "." + PathName();
}

const Control& Control::Root() const {
  const Control* root = this;
  while (root->parent_ != nullptr) root = root->parent_;
  return *root;
}

Control& Control::Root() { return const_cast<Control&>(std::as_const(*this).Root()); }

// Breadth first, so that the nearest of equal names is found.
Control* Control::Descendant(std::string_view path_name) {
  std::vector<Control*> level = children_;
  while (!level.empty()) {
    std::vector<Control*> next;
    for (Control* control : level) {
      if (text::EqualsIgnoreCase(control->PathName(), path_name)) return control;
      next.insert(next.end(), control->children_.begin(), control->children_.end());
    }
    level = std::move(next);
  }
  return nullptr;
}

Control* Control::Find(std::string_view path) {
  if (path.empty()) return this;
  const std::size_t dot = path.find('.');
  Control* const control = Descendant(path.substr(0, dot));
  if (control == nullptr || dot == std::string_view::npos) return control;
  return control->Find(path.substr(dot + 1));
}

std::string Control::Get(std::string_view property, const std::vector<std::string>& arguments) {
  const PropertyEntry* const entry = Entry(property);
  if (entry == nullptr || !entry->get) {
    throw Error(ErrorNumber::kItemNotFound, Path() + " has no property " + std::string(property));
  }
  return entry->get(*this, arguments);
}

void Control::Set(std::string_view property, const std::string& value,
                  const std::vector<std::string>& arguments) {
  const PropertyEntry* const entry = Entry(property);
  if (entry == nullptr) {
    throw Error(ErrorNumber::kItemNotFound, Path() + " has no property " + std::string(property));
  }
  if (!entry->set) {
    throw Error(ErrorNumber::kInvalidCall,
                Path() + "." + std::string(entry->name) + " can't be assigned");
  }
  entry->set(*this, arguments, value);
}

namespace {

const PropertyTable& CommonProperties() {
  using property::ReadOnly;
  using property::ReadWrite;
  static const PropertyTable table = {
      ReadWrite("Left", &Control::Left, &Control::SetLeft),
      ReadWrite("Top", &Control::Top, &Control::SetTop),
      ReadWrite("Width", &Control::Width, &Control::SetWidth),
      ReadWrite("Height", &Control::Height, &Control::SetHeight),
      ReadWrite("Visible", &Control::Visible, &Control::SetVisible),
      ReadWrite("Enabled", &Control::Enabled, &Control::SetEnabled),
      ReadWrite("RightToLeft", &Control::RightToLeft, &Control::SetRightToLeft),
      ReadWrite("TabIndex", &Control::TabIndex, &Control::SetTabIndex),
      ReadWrite("TabStop", &Control::TabStop, &Control::SetTabStop),
      {"Tag", [](Control& c, const std::vector<std::string>&) { return c.Tag(); },
       [](Control& c, const std::vector<std::string>&, const std::string& v) { c.SetTag(v); }},
      {"ToolTipText", [](Control& c, const std::vector<std::string>&) { return c.ToolTipText(); },
       [](Control& c, const std::vector<std::string>&, const std::string& v) {
         c.SetToolTipText(v);
       }},
      {"Name", [](Control& c, const std::vector<std::string>&) { return c.Name(); }, nullptr},
  };
  return table;
}

const PropertyEntry* Lookup(const PropertyTable& table, std::string_view name) {
  const auto found = std::find_if(table.begin(), table.end(), [&](const PropertyEntry& entry) {
    return text::EqualsIgnoreCase(entry.name, name);
  });
  return found == table.end() ? nullptr : &*found;
}

}  // namespace

const PropertyTable& Control::OwnProperties() const {
  static const PropertyTable none;
  return none;
}

const PropertyEntry* Control::Entry(std::string_view property) const {
  const PropertyEntry* const own = Lookup(OwnProperties(), property);
  return own != nullptr ? own : Lookup(CommonProperties(), property);
}

std::vector<std::string_view> Control::PropertyNames() const {
  std::vector<std::string_view> names;
  for (const PropertyTable* table : {&OwnProperties(), &CommonProperties()}) {
    for (const PropertyEntry& entry : *table) names.push_back(entry.name);
  }
  return names;
}

ControlObserver* Control::Observer() const { return Root().observer_; }

void Control::Changed(std::string_view property) {
  if (ControlObserver* observer = Observer()) observer->PropertyChanged(*this, property);
}

void Control::SetLeft(std::int32_t twips) { Assign(left_, twips, "Left"); }
void Control::SetTop(std::int32_t twips) { Assign(top_, twips, "Top"); }

void Control::SetWidth(std::int32_t twips) {
  if (Assign(width_, twips, "Width") && on_resize) on_resize();
}

void Control::SetHeight(std::int32_t twips) {
  if (Assign(height_, twips, "Height") && on_resize) on_resize();
}

void Control::Move(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) {
  SetLeft(left);
  SetTop(top);
  const bool wider = Assign(width_, width, "Width");
  const bool higher = Assign(height_, height, "Height");
  if ((wider || higher) && on_resize) on_resize();
}

void Control::SetVisible(bool visible) { Assign(visible_, visible, "Visible"); }
void Control::SetEnabled(bool enabled) { Assign(enabled_, enabled, "Enabled"); }
void Control::SetRightToLeft(bool on) { Assign(right_to_left_, on, "RightToLeft"); }
void Control::SetTag(std::string tag) { Assign(tag_, std::move(tag), "Tag"); }
void Control::SetToolTipText(std::string text) {
  Assign(tool_tip_, std::move(text), "ToolTipText");
}
void Control::SetTabIndex(std::int32_t index) { Assign(tab_index_, index, "TabIndex"); }
void Control::SetTabStop(bool on) { Assign(tab_stop_, on, "TabStop"); }

void Control::SetFocus() {
  Root().active_ = this;
  if (ControlObserver* observer = Observer()) observer->FocusSet(*this);
}

void Control::ZOrder() {
  if (parent_ == nullptr || parent_->children_.back() == this) return;
  std::erase(parent_->children_, this);
  parent_->children_.push_back(this);
  Changed("ZOrder");
}

}  // namespace vorek
