#ifndef CUSTOMSCONV_BASE_LIFETIME_H_
#define CUSTOMSCONV_BASE_LIFETIME_H_

// Marks what the result of a function points into, so that clang refuses a view of a temporary:
//
//   std::string_view Trim(std::string_view text CUSTOMSCONV_LIFETIME_BOUND);
//   const std::string& name() const CUSTOMSCONV_LIFETIME_BOUND;
//
//   const std::string_view code = Trim(document.CurPath());         // good as long as the document
//   const std::string_view code = Trim(ShortText::Cut(line));       // does not compile
//
// On a parameter the result must not outlive the argument, behind a member function it must not
// outlive the object. clang 14 follows our own types and references; a std::string that is
// converted to the std::string_view of a parameter slips through, so keep those in a variable.
// gcc knows no such mark.
#if defined(__clang__)
#define CUSTOMSCONV_LIFETIME_BOUND [[clang::lifetimebound]]
#else
#define CUSTOMSCONV_LIFETIME_BOUND
#endif

#endif  // CUSTOMSCONV_BASE_LIFETIME_H_
