# The library's layers as build targets, each seeing only what it may use.
#
# A layer is a set of folders under src/kivdb. Its sources include one another's headers by
# their path under src/kivdb ("platform/oledate.h"); the layers above it reach only the
# headers it names public. Both work through folders of one-line forwarding headers in the
# build tree: the layer's own sources see all its headers, its users only the public ones, so
# an internal header is simply not found from above. A public header includes only public
# headers, or internal ones of its own folder by file name alone.
#
# Every header is also compiled alone, as its readers see it (kivdb_header_check): a header
# that needs what its layer may not use, or an internal header of another layer, breaks the
# build.

set(KIVDB_SRC ${PROJECT_SOURCE_DIR}/src/kivdb)
set(KIVDB_LAYER_ROOT ${PROJECT_BINARY_DIR}/layers)
option(KIVDB_HEADER_CHECK "Compile every header alone, as its layer's users see it" ON)
if(KIVDB_SANITIZE OR KIVDB_FUZZ)
  set(KIVDB_HEADER_CHECK OFF)  # checked by the ordinary build already
endif()

# Writes a header that includes `target`; rewritten only when it changes, so a configure run
# does not rebuild what includes it.
function(kivdb_forwarding_header path target)
  file(CONFIGURE OUTPUT ${path} CONTENT "#include \"${target}\"\n")
endfunction()

# Removes the forwarding headers under `root` that are not in `keep` (a header deleted or
# made internal must stop being found).
function(kivdb_prune_forwarders root keep)
  file(GLOB_RECURSE existing ${root}/*.h)
  foreach(path ${existing})
    if(NOT path IN_LIST keep)
      file(REMOVE ${path})
    endif()
  endforeach()
endfunction()

# kivdb_layer_headers(TARGET ROOT DIR FOLDERS folder... PUBLIC header...)
# Gives TARGET the headers of FOLDERS (paths under DIR): all of them privately, the PUBLIC
# ones (paths under DIR as well) to its users too.
function(kivdb_layer_headers target)
  cmake_parse_arguments(L "" "ROOT" "FOLDERS;PUBLIC" ${ARGN})
  set(root ${KIVDB_LAYER_ROOT}/${target})
  set(private_paths)
  set(public_paths)
  set(all_rel)
  foreach(folder ${L_FOLDERS})
    file(GLOB headers CONFIGURE_DEPENDS ${L_ROOT}/${folder}/*.h)
    foreach(header ${headers})
      file(RELATIVE_PATH rel ${L_ROOT} ${header})
      list(APPEND all_rel ${rel})
      kivdb_forwarding_header(${root}/private/${rel} ${header})
      list(APPEND private_paths ${root}/private/${rel})
    endforeach()
  endforeach()
  foreach(rel ${L_PUBLIC})
    if(NOT rel IN_LIST all_rel)
      message(FATAL_ERROR "${target}: public header ${rel} is not a header of its folders")
    endif()
    kivdb_forwarding_header(${root}/public/${rel} ${L_ROOT}/${rel})
    list(APPEND public_paths ${root}/public/${rel})
  endforeach()
  kivdb_prune_forwarders(${root}/private "${private_paths}")
  kivdb_prune_forwarders(${root}/public "${public_paths}")

  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE ${root}/public)
  elseif(type MATCHES "LIBRARY$")
    target_include_directories(${target} PUBLIC ${root}/public PRIVATE ${root}/private)
  else()
    target_include_directories(${target} PRIVATE ${root}/private)
  endif()
  set_property(TARGET ${target} PROPERTY KIVDB_ALL_HEADERS ${all_rel})
  set_property(TARGET ${target} PROPERTY KIVDB_PUBLIC_HEADERS ${L_PUBLIC})
  set_property(TARGET ${target} PROPERTY KIVDB_HEADER_ROOT ${L_ROOT})
endfunction()

# kivdb_header_check(TARGET DEPENDS dep... PRIVATE_DEPENDS dep...)
# Compiles each public header of TARGET as a user of the layer sees it (TARGET's public
# headers and DEPENDS), and each internal one as the layer's own sources see it.
function(kivdb_header_check target)
  cmake_parse_arguments(C "" "" "DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  if(NOT KIVDB_HEADER_CHECK)
    return()
  endif()
  if(NOT TARGET kivdb_header_check)
    add_custom_target(kivdb_header_check)
  endif()
  get_target_property(all ${target} KIVDB_ALL_HEADERS)
  get_target_property(public ${target} KIVDB_PUBLIC_HEADERS)
  set(check_dir ${PROJECT_BINARY_DIR}/header_check/${target})
  foreach(kind public internal)
    set(units)
    foreach(rel ${all})
      set(listed_public FALSE)
      if(rel IN_LIST public)
        set(listed_public TRUE)
      endif()
      if((kind STREQUAL "public" AND listed_public) OR (kind STREQUAL "internal" AND NOT listed_public))
        string(MAKE_C_IDENTIFIER ${rel} unit)
        file(CONFIGURE OUTPUT ${check_dir}/${unit}.cpp CONTENT "#include \"${rel}\"\n")
        list(APPEND units ${check_dir}/${unit}.cpp)
      endif()
    endforeach()
    if(NOT units)
      continue()
    endif()
    set(check ${target}_${kind}_headers)
    add_library(${check} OBJECT ${units})
    if(kind STREQUAL "public")
      target_link_libraries(${check} PRIVATE ${C_DEPENDS})
    else()
      target_link_libraries(${check} PRIVATE ${C_DEPENDS} ${C_PRIVATE_DEPENDS})
    endif()
    if(kind STREQUAL "public")
      target_include_directories(${check} PRIVATE ${KIVDB_LAYER_ROOT}/${target}/public)
    else()
      target_include_directories(${check} PRIVATE ${KIVDB_LAYER_ROOT}/${target}/private)
    endif()
    set_target_properties(${check} PROPERTIES AUTOMOC OFF AUTORCC OFF AUTOUIC OFF)
    add_dependencies(kivdb_header_check ${check})
  endforeach()
endfunction()

# kivdb_add_layer(NAME FOLDERS folder... [PUBLIC header...] [DEPENDS dep...]
#                 [PRIVATE_DEPENDS dep...] [SOURCES extra...])
# A static library of the sources of FOLDERS (under src/kivdb; tests and fuzz targets left
# out), or an interface library when they hold headers only.
function(kivdb_add_layer name)
  cmake_parse_arguments(L "" "" "FOLDERS;PUBLIC;DEPENDS;PRIVATE_DEPENDS;SOURCES" ${ARGN})
  set(sources ${L_SOURCES})
  foreach(folder ${L_FOLDERS})
    file(GLOB found CONFIGURE_DEPENDS ${KIVDB_SRC}/${folder}/*.cpp)
    list(FILTER found EXCLUDE REGEX "_(test|fuzz)\\.cpp$")
    list(APPEND sources ${found})
  endforeach()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC ${L_DEPENDS} PRIVATE ${L_PRIVATE_DEPENDS})
    target_compile_options(${name} PRIVATE -Wall -Wextra)
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${L_DEPENDS})
  endif()
  kivdb_layer_headers(${name} ROOT ${KIVDB_SRC} FOLDERS ${L_FOLDERS} PUBLIC ${L_PUBLIC})
  kivdb_header_check(${name} DEPENDS ${name} ${L_DEPENDS} PRIVATE_DEPENDS ${L_PRIVATE_DEPENDS})
endfunction()
