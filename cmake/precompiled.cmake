# The toolkit's headers are parsed once for all windows and once for all tests, not once a file. Only headers of the
# system stand here: our own change too often. A file still names everything it uses; a build with
# -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON proves that none leans on these lists.
set(PRECOMPILED_STD <algorithm> <array> <cmath> <functional> <map> <memory> <optional> <string> <utility> <vector>)
set(PRECOMPILED_ENGINE ${PRECOMPILED_STD} <cstdint> <set> <span> <string_view> <unordered_map>)
set(PRECOMPILED_QT <QAction> <QApplication> <QCheckBox> <QComboBox> <QDate> <QDialog> <QDir> <QFile> <QGridLayout>
  <QHash> <QKeyEvent> <QLabel> <QLineEdit> <QList> <QLocale> <QPainter> <QPlainTextEdit> <QPushButton>
  <QRegularExpression> <QString> <QStringList> <QTimer> <QToolBar> <QVBoxLayout> <QWidget>)
set(PRECOMPILED_TESTS <QTemporaryDir> <QTest> <gmock/gmock.h> <gtest/gtest.h>)

target_precompile_headers(tarvello_sql PRIVATE ${PRECOMPILED_ENGINE})
target_precompile_headers(tarvello_dao REUSE_FROM tarvello_sql)
target_precompile_headers(tarvello_platform PRIVATE ${PRECOMPILED_STD} ${PRECOMPILED_QT})
foreach(floor tarvello_common tarvello_data tarvello_exchange tarvello_catalogue
        tarvello_documents tarvello_records tarvello_shell)
  target_precompile_headers(${floor} REUSE_FROM tarvello_platform)
endforeach()

# tarvello_precompiled_tests(TARGET QT|PLAIN): the first target of a kind makes the header, the others take it.
function(tarvello_precompiled_tests target kind)
  get_property(first GLOBAL PROPERTY TARVELLO_PRECOMPILED_${kind})
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
    return()
  endif()
  if(kind STREQUAL "QT")
    target_precompile_headers(${target} PRIVATE ${PRECOMPILED_STD} ${PRECOMPILED_QT} ${PRECOMPILED_TESTS})
  else()
    target_precompile_headers(${target} PRIVATE ${PRECOMPILED_ENGINE} <filesystem> <fstream> <gmock/gmock.h> <gtest/gtest.h>)
  endif()
  set_property(GLOBAL PROPERTY TARVELLO_PRECOMPILED_${kind} ${target})
endfunction()

# tarvello_together(TARGET COUNT [UNIT...]): COUNT units of a target as one, in the order of their names. What each unit
# of tests brings with it (the templates of toolkit and tests) costs more than most of them say themselves. The UNITs
# stay alone: their helpers have the names of a neighbour's.
function(tarvello_together target count)
  if(CMAKE_DISABLE_PRECOMPILE_HEADERS)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${count})
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  # A class of a unit's own is taken for one of a header's there.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endfunction()
