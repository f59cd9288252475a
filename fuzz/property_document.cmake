add_executable(property_document_fuzz
    property_document_fuzz.cpp ${PROJECT_SOURCE_DIR}/tests/property_clipboard/property_bag.cpp)
kyr_target_defaults(property_document_fuzz)
target_include_directories(property_document_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(property_document_fuzz PRIVATE Kyr::SceneOutlineInside)
target_link_options(property_document_fuzz PRIVATE -fsanitize=fuzzer)
