// SPDX-License-Identifier: MIT
/// An operator of a page's content: checked, written and noted, in this order.
///
///     return PageOperator(page, kInPage | kInText)
///         .RefuseIf(width < 0)
///         .Write(width, "w")
///         .Then([&](PageAttributes &now) { now.gstate->line_width = width; });
///
/// Whatever is refused or can't be written, for want of memory, leaves the page as it was: a failed step leaves out
/// those that follow, and its status is what the call returns. The page's error record keeps the failure.
#pragma once

#include <hpdf.h>

#include <concepts>

#include "plugin/engine/pages/content_writer.h"
#include "plugin/engine/pages/page_object.h"
#include "plugin/engine/pages/page_resources.h"

namespace quillbar::engine {

/// The modes of a page in which an operator is allowed (ISO 32000-1, figure 9). They can be joined with `|`.
inline constexpr HPDF_UINT kInPage = HPDF_GMODE_PAGE_DESCRIPTION;
inline constexpr HPDF_UINT kInPath = HPDF_GMODE_PATH_OBJECT;
inline constexpr HPDF_UINT kInClippingPath = HPDF_GMODE_CLIPPING_PATH;
inline constexpr HPDF_UINT kInText = HPDF_GMODE_TEXT_OBJECT;

/// A call that writes one operator, or some that belong together. See the head of this file.
class PageOperator {
 public:
  /// Begins a call on `page`. It is refused with HPDF_INVALID_OBJECT for null and HPDF_INVALID_PAGE for what is not a
  /// page, which no error record learns of, and with HPDF_PAGE_INVALID_GMODE in any other mode than `modes`.
  PageOperator(HPDF_Page page, HPDF_UINT modes) : page_(page) {
    if (!IsPage(page)) [[unlikely]] {
      status_ = page == nullptr ? HPDF_INVALID_OBJECT : HPDF_INVALID_PAGE;
    } else if ((Attributes().gmode & modes) == 0) [[unlikely]] {
      Refuse(HPDF_PAGE_INVALID_GMODE, 0);
    }
  }

  /// Whether nothing has been refused so far, nor failed.
  bool IsAllowed() const { return status_ == HPDF_OK; }
  /// The page as it is now. Only while the call is allowed.
  const PageAttributes &Now() const { return Attributes(); }
  /// The library's status of the call.
  HPDF_STATUS Status() const { return status_; }

  /// Refuses the call with `code` and `detail` if `isBad` holds.
  PageOperator &RefuseIf(bool isBad, HPDF_STATUS code = HPDF_PAGE_OUT_OF_RANGE, HPDF_STATUS detail = 0) {
    if (isBad && IsAllowed()) [[unlikely]]
      Refuse(code, detail);
    return *this;
  }
  /// The same for a condition that needs the page, and is asked only if the call is allowed so far.
  template <std::predicate<const PageAttributes &> Condition>
  PageOperator &RefuseIf(Condition condition, HPDF_STATUS code) {
    if (IsAllowed() && condition(Attributes())) [[unlikely]]
      Refuse(code, 0);
    return *this;
  }

  /// The name of a resource, for Write(). The call is refused with `code` if the page can't list it; with the reason
  /// for that if `code` is HPDF_OK, or if memory was short.
  ResourceName NameOf(const ResourceCategory &category, HPDF_Dict resource, HPDF_STATUS code) {
    if (!IsAllowed()) return {nullptr};
    const ResourceName name = NameOfResource(page_, category, resource);
    if (name.text == nullptr) {
      const bool isShortage = HPDF_Error_GetCode(page_->error) == HPDF_FAILD_TO_ALLOC_MEM;
      code == HPDF_OK || isShortage ? Fail() : Refuse(code, 0);
    }
    return name;
  }

  /// Writes operands and operators in the order of the content: Write(x, y, "m").
  template <typename... Parts>
  PageOperator &Write(const Parts &...parts) {
    return WriteBy([&](ContentWriter &content) { content.Write(parts...); });
  }
  /// The same for as many operators as `write` appends.
  template <std::invocable<ContentWriter &> Writer>
  PageOperator &WriteBy(Writer write) {
    if (!IsAllowed()) return *this;
    ContentWriter content(Attributes().stream);
    write(content);
    if (content.Finish() != HPDF_OK) [[unlikely]]
      Fail();
    return *this;
  }

  /// Makes a change of the page, once the operator is written. Ends the call.
  template <std::invocable<PageAttributes &> Change>
  HPDF_STATUS Then(Change change) {
    if (IsAllowed()) change(Attributes());
    return status_;
  }

 private:
  PageAttributes &Attributes() const { return AttributesOf(page_); }
  void Refuse(HPDF_STATUS code, HPDF_STATUS detail) { status_ = HPDF_RaiseError(page_->error, code, detail); }
  // Something has failed and left its reason in the error record.
  void Fail() { status_ = HPDF_CheckError(page_->error); }

  HPDF_Page page_;
  HPDF_STATUS status_ = HPDF_OK;
};

}  // namespace quillbar::engine
