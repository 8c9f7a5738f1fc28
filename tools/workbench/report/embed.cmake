# Makes a source of report.css and report.js, which lie beside this script:
#   cmake -DOUTPUT=FILE -P embed.cmake
# A page tells by a hash which script may run in it, and that is of all between the tags.

file(READ ${CMAKE_CURRENT_LIST_DIR}/report.css style_sheet)
file(READ ${CMAKE_CURRENT_LIST_DIR}/report.js script)
string(PREPEND style_sheet "\n")
string(PREPEND script "\n")

# encode_base64(VARIABLE HEX): 32 bytes, 3 hexadecimal digits as 2 characters.
function(encode_base64 variable hex)
  set(characters "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(text "")
  foreach(place RANGE 0 63 3)
    string(SUBSTRING "${hex}00" ${place} 3 digits)
    math(EXPR first "0x${digits} >> 6")
    math(EXPR second "0x${digits} & 63")
    foreach(index ${first} ${second})
      string(SUBSTRING ${characters} ${index} 1 character)
      string(APPEND text ${character})
    endforeach()
  endforeach()
  string(SUBSTRING ${text} 0 43 text) # what is left over is no byte
  set(${variable}
      "${text}="
      PARENT_SCOPE)
endfunction()

string(SHA256 hash "${script}")
encode_base64(hash ${hash})

file(
  WRITE ${OUTPUT}
  "#include \"report/assets.h\"

const char* const Report::styleSheet = R\"asset(${style_sheet})asset\";

const char* const Report::script = R\"asset(${script})asset\";

const char* const Report::scriptSha256 = \"${hash}\";
")
