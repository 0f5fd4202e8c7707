# Helpers for the cases that run the scripts of examples/, each on copies in its case directory.
EXAMPLES="$CASES_DIR/../../examples"

# example NAME [DATA...]: copies examples/NAME.xml and the named files of examples/data here.
example() {
  cp "$EXAMPLES/$1.xml" .
  local f
  for f in "${@:2}"; do cp "$EXAMPLES/data/$f" .; done
}

# winpath PATH: the Windows form of a path below the case directory.
winpath() { echo "Z:$(realpath -m "$1" | tr / '\\')"; }

# install_service NAME: installs the test service as NAME from "svc dir" (with a service.conf
# and a local.txt beside it), starts it, and lays out a new release in "new" (service.conf and
# lang/en.txt; the case adds the program it wants).
install_service() {
  mkdir -p 'svc dir' new/lang
  cp "$HELPERS/test_service.exe" 'svc dir/'
  echo mode=old > 'svc dir/service.conf'; echo kept > 'svc dir/local.txt'
  echo mode=new > new/service.conf; echo hello > new/lang/en.txt
  win sc create "$1" binPath= "\"$(winpath 'svc dir/test_service.exe')\" \"$(winpath marker.txt)\"" >/dev/null
  win sc start "$1" >/dev/null
  for _ in $(seq 100); do grep -q started marker.txt 2>/dev/null && return 0; sleep 0.1; done
  echo "service $1 did not start within 10 s" >&2; return 1
}

# as_shipped NAME: lays out the case directory as a checkout is: the interpreter in prog/ (run
# it with "program: prog/upkeep.exe") and the samples in examples/data/, where the scripts look
# for them (%enginedir%..\examples\data).
as_shipped() {
  example "$1"
  mkdir -p prog examples/data
  cp "$UPKEEP" prog/ && cp "$EXAMPLES"/data/* examples/data/
}

# temp_file NAME: the Linux path of %TEMP%\UpkeepExamples\NAME, where the scripts put what
# they make when no /var names a place. Cases remove only their own file there: the files of
# this directory run at the same time.
temp_file() {
  local temp
  temp=$(win cmd /c 'echo %TEMP%' | tr -d '\r')
  echo "$(win winepath -u "$temp" | tr -d '\r')/UpkeepExamples/$1"
}

# signed_program NAME: a copy of a helper program signed with a throw-away certificate (Wine
# checks the signature's digest, not the certificate's trust).
signed_program() {
  openssl req -x509 -newkey rsa:2048 -nodes -keyout key.pem -out cert.pem -days 3650 \
    -subj "/CN=Upkeep Example Signer" -addext "extendedKeyUsage=codeSigning" 2>/dev/null
  osslsigncode sign -certs cert.pem -key key.pem -h sha256 -in "$HELPERS/child.exe" -out "$1" >/dev/null
}
