Create Table phonebook (
    SN counter,
    Telno text(255),
    simpledes text(255),
    detaildes text(255),
    ifinblacklist text(1),
    IfVIP text(1)
);
create unique index SN on phonebook (SN);
