"""An FTP server on the loopback: ftpserver.py FOLDER PORT USER PASSWORD [CERTIFICATE [QUOTA]]

Serves FOLDER and prints its port. With a certificate (PEM with its key, "" for none) it demands TLS. Beyond QUOTA bytes
it refuses a file, also in the middle of one. A user that it does not know is refused before the password.
"""

import os
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler, TLS_DTPHandler, TLS_FTPHandler, logger
from pyftpdlib.ioloop import RetryError
from pyftpdlib.servers import FTPServer

folder, port, user, password = sys.argv[1:5]
certificate = sys.argv[5] if len(sys.argv) > 5 else ""
quota = int(sys.argv[6]) if len(sys.argv) > 6 else 0


def used():
    return sum(os.path.getsize(os.path.join(at, name)) for at, _, names in os.walk(folder) for name in names)


class Data(TLS_DTPHandler if certificate else DTPHandler):
    # The client shakes hands before it says what it wants to send; the library takes that for an end.
    def readable(self):
        waits = not self.receive and not self._initialized
        return getattr(self, "_ssl_accepting", False) or (not waits and super().readable())

    def recv(self, size):
        chunk = super().recv(size)
        if quota and self.tot_bytes_received + len(chunk) > quota:
            self._resp = ("552 Quota exceeded.", logger.info)
            self.close()
            raise RetryError
        return chunk


class Handler(TLS_FTPHandler if certificate else FTPHandler):
    dtp_handler = Data
    auth_failed_timeout = 0
    use_sendfile = False
    certfile = certificate or None
    tls_control_required = tls_data_required = True

    def ftp_USER(self, line):
        if not self.authorizer.has_user(line):
            self.respond("530 No such user.")
        else:
            super().ftp_USER(line)

    def ftp_STOR(self, file, mode="w"):
        if quota and used() >= quota:
            self.respond("552 Quota exceeded.")
            return None
        return super().ftp_STOR(file, mode)


authorizer = DummyAuthorizer()
authorizer.add_user(user, password, folder, perm="elradfmw")
Handler.authorizer = authorizer
server = FTPServer(("127.0.0.1", int(port)), Handler)
print(server.address[1], flush=True)
server.serve_forever()
