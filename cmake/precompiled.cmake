# Precompiled headers: reading the same headers again took a third of a build. Only what never
# changes is among them. The preset core-only builds without, so that a file of the core that
# forgets an include is found.
set(ORVELLO_STANDARD_HEADERS <algorithm> <array> <cstdint> <functional> <map> <memory> <optional>
  <string> <string_view> <utility> <vector>)
set(ORVELLO_QT_HEADERS <QApplication> <QKeyEvent> <QLineEdit> <QListWidget> <QMenu> <QPainter>
  <QPointer> <QPushButton> <QTimer>)
set(ORVELLO_TEST_HEADERS <filesystem> <fstream> <sstream> <gtest/gtest.h>)

# orvello_precompile(TARGET SET HEADER...): the first target of a set makes the precompiled header
# and the others use it, so they must be compiled with the same options.
function(orvello_precompile target set)
  get_property(owner GLOBAL PROPERTY orvello_precompiled_${set})
  if(owner)
    target_precompile_headers(${target} REUSE_FROM ${owner})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
    set_property(GLOBAL PROPERTY orvello_precompiled_${set} ${target})
  endif()
endfunction()

# ccache needs to see the precompiled header's name in what the preprocessor writes, and to be told
# that the macros defined within it need no look.
if(NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache$")
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ccache)
  endif()
endif()
