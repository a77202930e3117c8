Create Table Help (
    HelpID text(100),
    Help memo
);
create unique index HelpID on Help (HelpID);
