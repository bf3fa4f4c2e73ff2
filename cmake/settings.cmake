# Every target of the project gets its language level, warnings and
# instrumentation from here; nothing is set globally.

# Views of what is gone are errors, also where warnings are not: clang finds them by the marks of
# src/base/lifetime.h.
set(CUSTOMSCONV_DANGLING_ERRORS -Werror=dangling -Werror=dangling-gsl -Werror=return-stack-address)

function(customsconv_settings target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON
                        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    # Part of -Wconversion with clang only.
    target_compile_options(${target} PRIVATE -Wno-sign-conversion ${CUSTOMSCONV_DANGLING_ERRORS})
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # gcc 12 takes "literal" + std::string for overlapping copies (its bug 105651).
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                             $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
  if(CUSTOMSCONV_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-sanitize-recover=all
                           -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(CUSTOMSCONV_COVERAGE)
    target_compile_options(${target} PUBLIC --coverage)
    target_link_options(${target} PUBLIC --coverage)
  endif()
  if(CUSTOMSCONV_FUZZ)
    target_compile_options(${target} PUBLIC -fsanitize=fuzzer-no-link)
  endif()
endfunction()
