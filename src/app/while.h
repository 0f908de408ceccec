#pragma once

namespace quorbel {

/// Keeps a flag set while it lasts.
class While {
 public:
  explicit While(bool& flag) : m_Flag(flag) { m_Flag = true; }
  ~While() { m_Flag = false; }
  While(const While&) = delete;
  While& operator=(const While&) = delete;

 private:
  bool& m_Flag;
};

}  // namespace quorbel
