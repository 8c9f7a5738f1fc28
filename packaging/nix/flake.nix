{
  description = "Beddings of structural models: kept, pruned, read and written";

  inputs.nixpkgs.url = "nixpkgs";

  outputs = { self, nixpkgs }:
    let
      systems = [ "x86_64-linux" "aarch64-linux" ];
      forAll = make: nixpkgs.lib.genAttrs systems (system: make nixpkgs.legacyPackages.${system});
    in {
      packages = forAll (packages: rec {
        kvfound = packages.callPackage ./package.nix { };
        default = kvfound;
      });
    };
}
