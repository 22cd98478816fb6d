"""A TDS 7.4 server for tests: the wire of Microsoft SQL Server in front of SQLite or H2.

The protocol is public as MS-TDS. Only the standard library is needed.
"""
