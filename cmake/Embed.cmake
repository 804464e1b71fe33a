# house_embed(target file header name): the bytes of a text file as a std::string_view `name`, declared in `header`.
function(house_embed target file header name)
  get_filename_component(leaf ${file} NAME_WE)
  set(source ${CMAKE_BINARY_DIR}/embedded/${leaf}.cpp)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${file})
  file(READ ${CMAKE_SOURCE_DIR}/${file} bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT "#include \"${header}\"

namespace nordkeep {
namespace {
constexpr unsigned char kBytes[] = {${bytes}};
}
const std::string_view ${name}(reinterpret_cast<const char*>(kBytes), sizeof kBytes);
}
")
  target_sources(${target} PRIVATE ${source})
endfunction()
