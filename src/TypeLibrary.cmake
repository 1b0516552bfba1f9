# Compiles the type library, the C++ header of its interfaces, and the member tables that late
# binding uses. Targets: vela_contract (headers). Variable: VELA_TYPE_LIBRARY, the compiled file.
# A Windows toolchain brings MIDL and the platform's definitions with it; elsewhere widl does the
# same with those of Wine.
find_program(PYTHON NAMES python3 python REQUIRED)
set(generated ${CMAKE_CURRENT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})
set(external ${CMAKE_CURRENT_SOURCE_DIR}/automation/external)
find_program(MIDL NAMES midl)
if(MIDL)
    set(midl_environment win${bits})
    if(bits EQUAL 64)
        set(midl_environment x64)
    endif()
    set(idl ${MIDL} /nologo /env ${midl_environment} /I ${external} /I ${CMAKE_CURRENT_SOURCE_DIR}
        /I ${generated} /out ${generated})
    set(as_library /tlb)
    set(as_header /h)
else()
    set(widl_target i686-w64-mingw32)
    if(bits EQUAL 64)
        set(widl_target x86_64-w64-mingw32)
    endif()
    find_program(WIDL NAMES ${widl_target}-widl i686-w64-mingw32-widl widl REQUIRED)
    find_path(PLATFORM_IDL oaidl.idl PATHS /usr/include/wine/wine/windows
              /usr/include/wine-development/wine/windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    find_path(PLATFORM_TLB stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
              /usr/lib/i386-linux-gnu/wine/i386-windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(idl ${WIDL} -b ${widl_target} -I${PLATFORM_IDL} -I${external}
        -I${CMAKE_CURRENT_SOURCE_DIR} -L${PLATFORM_TLB} -L${generated})
    set(as_library -t -o)
    set(as_header -h -o)
endif()

set(folders frame collections preferences notifications serialization text files security system)
set(fragments)
set(member_tables)
foreach(folder ${folders})
    list(APPEND fragments ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/${folder}.idl)
    list(APPEND member_tables ${generated}/${folder}_members.cpp)
endforeach()

foreach(stub scripting xml)
    add_custom_command(
        OUTPUT ${generated}/${stub}.tlb
        COMMAND ${idl} ${as_library} ${generated}/${stub}.tlb ${external}/${stub}.idl
        DEPENDS ${external}/${stub}.idl ${external}/${stub}_types.idl VERBATIM)
endforeach()
add_custom_command(
    OUTPUT ${generated}/scripting_types.h
    COMMAND ${idl} ${as_header} ${generated}/scripting_types.h ${external}/scripting_types.idl
    DEPENDS ${external}/scripting_types.idl VERBATIM)

set(VELA_TYPE_LIBRARY ${generated}/VelaUtil10.tlb)
set(contract_sources ${CMAKE_CURRENT_SOURCE_DIR}/VelaUtil10.idl
    ${CMAKE_CURRENT_SOURCE_DIR}/declarations.idl ${fragments})
add_custom_command(
    OUTPUT ${VELA_TYPE_LIBRARY} ${generated}/VelaUtil10.h
    COMMAND ${idl} ${as_library} ${VELA_TYPE_LIBRARY} ${CMAKE_CURRENT_SOURCE_DIR}/VelaUtil10.idl
    COMMAND ${idl} ${as_header} ${generated}/VelaUtil10.h ${CMAKE_CURRENT_SOURCE_DIR}/VelaUtil10.idl
    DEPENDS ${contract_sources} ${generated}/scripting.tlb ${generated}/xml.tlb VERBATIM)

set(contract_script ${CMAKE_SOURCE_DIR}/cmake/contract.py)
add_custom_command(
    OUTPUT ${generated}/contract.h ${member_tables}
    COMMAND ${PYTHON} ${contract_script} ${generated} ${fragments}
    DEPENDS ${contract_script} ${fragments} VERBATIM)

add_library(vela_contract INTERFACE)
add_custom_target(vela_contract_files DEPENDS ${VELA_TYPE_LIBRARY} ${generated}/VelaUtil10.h
                  ${generated}/scripting_types.h ${generated}/contract.h)
add_dependencies(vela_contract vela_contract_files)
target_include_directories(vela_contract SYSTEM INTERFACE ${generated} ${external})
