# Branch, commit, date and version of a build. Included, it declares the target lumivar_build_info and names
# the source it writes; run with -P at every build, it writes that source anew when something has changed.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(LUMIVAR_BUILD_INFO_SOURCE ${CMAKE_BINARY_DIR}/generated/BuildInfo.cpp)
    find_package(Git QUIET)
    add_custom_target(lumivar_build_info
        COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${CMAKE_SOURCE_DIR} -DOUTPUT=${LUMIVAR_BUILD_INFO_SOURCE}
                -DVERSION=${PROJECT_VERSION} -DGIT=${GIT_EXECUTABLE} -P ${CMAKE_CURRENT_LIST_FILE}
        BYPRODUCTS ${LUMIVAR_BUILD_INFO_SOURCE}
        COMMENT "Updating the build info" VERBATIM)
    return()
endif()

# The answer of git for this source tree, "unknown" without git or outside of a checkout.
function(ask_git out)
    set(answer unknown)
    if(GIT AND EXISTS ${SOURCE_DIR}/.git)
        execute_process(COMMAND ${GIT} -C ${SOURCE_DIR} ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE text
            OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
        if(result EQUAL 0 AND text)
            set(answer ${text})
        endif()
    endif()
    set(${out} ${answer} PARENT_SCOPE)
endfunction()

ask_git(BUILD_BRANCH rev-parse --abbrev-ref HEAD)
ask_git(BUILD_COMMIT rev-parse --short=12 HEAD)
# A source archive brings along what it was made from.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/Commit.txt archived)
if(BUILD_COMMIT STREQUAL unknown AND archived MATCHES "^[0-9a-f]+")
    string(SUBSTRING ${CMAKE_MATCH_0} 0 12 BUILD_COMMIT)
endif()
string(TIMESTAMP BUILD_DATE %y%m%d UTC)
configure_file(${SOURCE_DIR}/src/system/BuildInfo.cpp.in ${OUTPUT} @ONLY)
