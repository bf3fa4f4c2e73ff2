#ifndef CUSTOMSCONV_PLATFORM_POSIX_MEMORY_H_
#define CUSTOMSCONV_PLATFORM_POSIX_MEMORY_H_

namespace customsconv::posix {

// From now on the process keeps the memory that it frees for its next use. For a program
// that ends soon: a file's text, tree, document and tables follow each other, and
// touching fresh pages for each costs a good part of working on them. No more than a hint.
void KeepFreedMemory();

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_MEMORY_H_
