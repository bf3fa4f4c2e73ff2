# Every target of the project gets its language level, warnings and
# instrumentation from here; nothing is set globally.
function(customsconv_settings target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON
                        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    # Part of -Wconversion with clang only.
    target_compile_options(${target} PRIVATE -Wno-sign-conversion)
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
  if(CUSTOMSCONV_FUZZ)
    target_compile_options(${target} PUBLIC -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# One static library per folder of src/. It may link only the layers that stand
# below it; the order of the calls is the order of the layers. A folder of
# headers alone passes on what it uses. WITHOUT leaves out sources that a build has no
# library for.
set(CUSTOMSCONV_LAYERS "" CACHE INTERNAL "folders of src/, lowest first")
function(customsconv_layer name)
  cmake_parse_arguments(ARG "OUTSIDE_CORE" "" "USES;LIBRARIES;WITHOUT" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.cc)
  foreach(source ${ARG_WITHOUT})
    list(REMOVE_ITEM sources ${PROJECT_SOURCE_DIR}/src/${name}/${source})
  endforeach()
  list(FILTER sources EXCLUDE REGEX "/main\\.cc$")
  list(TRANSFORM ARG_USES PREPEND customsconv_)
  if(NOT sources)
    add_library(customsconv_${name} INTERFACE)
    target_link_libraries(customsconv_${name} INTERFACE ${ARG_USES} ${ARG_LIBRARIES})
    return()
  endif()
  add_library(customsconv_${name} STATIC ${sources})
  customsconv_settings(customsconv_${name})
  target_link_libraries(customsconv_${name} PUBLIC ${ARG_USES} ${ARG_LIBRARIES})
  if(NOT ARG_OUTSIDE_CORE)
    set(CUSTOMSCONV_LAYERS "${CUSTOMSCONV_LAYERS};${name}" CACHE INTERNAL "")
  endif()
endfunction()
