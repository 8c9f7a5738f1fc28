{ lib, stdenv, cmake, ninja, pugixml, fast-float, fmt, utf8proc, cli11, nlohmann_json, simdjson, libcsv }:

stdenv.mkDerivation {
  pname = "kvfound";
  version = lib.head (builtins.match ".*\n *VERSION ([0-9.]+)\n.*" (builtins.readFile ../../CMakeLists.txt));
  src = ../..;

  nativeBuildInputs = [ cmake ninja ];
  buildInputs = [ pugixml fast-float fmt utf8proc cli11 nlohmann_json simdjson libcsv ];
  cmakeFlags = [
    "-DKVFOUND_TOOLS=ON"
    "-DKVFOUND_PYTHON=OFF"
    "-DKVFOUND_WEB=OFF"
    "-DKVFOUND_EXAMPLES=OFF"
    "-DKVFOUND_TESTS=OFF"
    "-DKVFOUND_BENCHMARKS=OFF"
    "-DKVFOUND_FUZZERS=OFF"
  ];

  meta = {
    description = "Beddings of structural models: kept, pruned, read and written";
    license = lib.licenses.mit;
    platforms = lib.platforms.linux;
    mainProgram = "kvfound";
  };
}
