# The API reference, drawn from the public headers: cmake --build --preset dev --target api_reference
# A warning fails it.
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
    return()
endif()

set(DOXYGEN_PROJECT_NAME "Kyr Scene Outline")
set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/api)
set(DOXYGEN_FILE_PATTERNS *.h *.md)
set(DOXYGEN_EXCLUDE_PATTERNS
    */lib/kyr_scene_outline/browser/* */lib/kyr_scene_outline/properties/*
    */lib/kyr_scene_outline/selection/* */signal_details/*)
set(DOXYGEN_EXCLUDE_SYMBOLS std::* *::detail::* *_details::*)
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_SOURCE_DIR}/docs/embedding.md)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED Q_DECL_EXPORT= KYR_SCENE_OUTLINE_EXPORT= "Q_PROPERTY(x)=")
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/lib)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_QUIET YES)
# Members whose name says it all need no words; their classes do, which the test reads from the XML.
set(DOXYGEN_WARN_IF_UNDOCUMENTED NO)
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_GENERATE_XML YES)
set(DOXYGEN_XML_PROGRAMLISTING NO)
doxygen_add_docs(api_reference
    ${PROJECT_SOURCE_DIR}/docs/embedding.md ${PROJECT_SOURCE_DIR}/docs/api.md
    ${PROJECT_SOURCE_DIR}/lib ${PROJECT_SOURCE_DIR}/host ${PROJECT_SOURCE_DIR}/tools
    ${PROJECT_SOURCE_DIR}/testkit)
