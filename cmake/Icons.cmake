# The icons are drawn at build time, in the sizes that screens and desktops ask for: pictures need no drawing library in
# the program, and are the same on every system. calldesk_icons(VARIABLE FOLDER) draws each FOLDER/*.svg as
# <build folder>/icons/<name>-<pixels>.png and names the pictures in VARIABLE.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(CALLDESK_ICON_SIZES 16 20 24 32 40 48 64 96 128 256)

function(calldesk_icons variable folder)
    file(GLOB drawings CONFIGURE_DEPENDS ${folder}/*.svg)
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/icons)
    set(all)
    foreach(drawing IN LISTS drawings)
        cmake_path(GET drawing STEM name)
        set(pictures)
        set(commands)
        foreach(size IN LISTS CALLDESK_ICON_SIZES)
            set(picture ${CMAKE_CURRENT_BINARY_DIR}/icons/${name}-${size}.png)
            list(APPEND pictures ${picture})
            list(APPEND commands COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${picture} ${drawing})
        endforeach()
        add_custom_command(OUTPUT ${pictures} ${commands} DEPENDS ${drawing} COMMENT "Drawing ${name}" VERBATIM)
        list(APPEND all ${pictures})
    endforeach()
    set(${variable} ${all} PARENT_SCOPE)
endfunction()
