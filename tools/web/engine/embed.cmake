# Makes a source of a document: cmake -DINPUT=FILE -DOUTPUT=FILE -P embed.cmake
file(READ ${INPUT} document HEX)
string(REGEX REPLACE "(..)" "\\\\x\\1" document "${document}")
string(REGEX REPLACE "(................................................................)" "\\1\"\n    \"" document
                     "${document}")
file(SIZE ${INPUT} size)
file(WRITE ${OUTPUT}
     "#include \"sample.h\"\n\nconst std::string_view Engine::sample(\n    \"${document}\",\n    ${size});\n")
