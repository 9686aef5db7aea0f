# A package.
{ stdenv, lib, fetchurl ? null }:

let
  version = "1.5";
  /* Where it
     comes from. */
  inherit (lib) licenses;
in stdenv.mkDerivation rec {
  name = "demo-${version}";
  doCheck = true; # always
  jobs = if doCheck then 4 else 1;
  meta = with licenses; { text = "a \"demo\""; };
}
