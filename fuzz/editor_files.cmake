# Without the editor there is nobody to read scenes.
if(TARGET kyr_editor_files)
    foreach(subject scene_text scene_stream)
        add_executable(${subject}_fuzz ${subject}_fuzz.cpp)
        kyr_target_defaults(${subject}_fuzz)
        target_link_libraries(${subject}_fuzz PRIVATE kyr_editor_files)
        target_link_options(${subject}_fuzz PRIVATE -fsanitize=fuzzer)
    endforeach()
endif()
