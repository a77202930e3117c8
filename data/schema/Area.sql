Create Table placename (
    AreaCode text(25),
    Area text(255),
    PlaceName text(255)
);
create index AreaCode on placename (AreaCode);
